#!/usr/bin/env python3
"""bench/start_up.py BIN: from the start of `vesk4` to its main window standing idle, beside a window that does nothing.

Without a display (offscreen platform), warm, on a settings folder of its own. A program counts as usable when all of
its threads have waited for 150 ms without using the processor; what is measured is the wall time up to then.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

IDLE_SECONDS = 0.15
GOAL_SECONDS = 0.3
RUNS = 9


def used_ns(process):
    """Processor time of all threads so far, and whether one of them wants more."""
    total, busy = 0, False
    for task in pathlib.Path(f"/proc/{process.pid}/task").iterdir():
        try:
            total += int((task / "schedstat").read_text().split()[0])
            busy = busy or (task / "stat").read_text().rsplit(")", 1)[1].split()[0] in "RD"
        except OSError:
            pass  # a thread that has just ended
    return total, busy


def seconds_to_idle(command, environment):
    start = time.monotonic()
    process = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    last, last_at = 0, start
    try:
        while time.monotonic() - last_at < IDLE_SECONDS or last == 0:
            if process.poll() is not None:
                sys.exit(f"{command[0]} ended with {process.returncode}")
            now, busy = used_ns(process)
            if now != last or busy:
                last, last_at = now, time.monotonic()
            time.sleep(0.002)
    finally:
        process.kill()
        process.wait()
    return last_at - start


def main():
    binaries = pathlib.Path(sys.argv[1]).resolve()
    with tempfile.TemporaryDirectory() as home:
        folder = pathlib.Path(home) / "program"
        folder.mkdir()
        resources = pathlib.Path(__file__).resolve().parent.parent / "resources"
        for name in ("Sablon.xls", "Sablon_E.xls", "IstSbl.mdb"):
            shutil.copy(resources / name, folder)
        (folder / "ilk.sil").touch()
        environment = {**os.environ, "HOME": home, "QT_QPA_PLATFORM": "offscreen"}
        commands = {
            "vesk4": [str(binaries / "vesk4"), "--program-folder", str(folder)],
            "a bare window": [str(binaries / "bare_window")],
        }
        best = {name: min(seconds_to_idle(command, environment) for _ in range(RUNS))
                for name, command in commands.items()}
    for name, seconds in best.items():
        goal = f" (goal: {GOAL_SECONDS} s)" if name == "vesk4" else ""
        print(f"{name:20s} {seconds:6.3f} s to an idle window{goal}")


if __name__ == "__main__":
    main()
