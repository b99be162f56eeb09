#!/usr/bin/env python3
"""scripts/tidy.py BUILD_FOLDER [JOBS]: clang-tidy over every source of the compile database.

A file is looked at again only when it, a header it includes, the configuration or the tool has changed: clean
results are kept under VESK_TIDY_CACHE (build/tidy-cache), named by a hash over all of these.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent


def file_hash(path, known={}):
    if path not in known:
        known[path] = hashlib.sha256(path.read_bytes()).digest() if path.is_file() else b""
    return known[path]


def dependencies(folder):
    """Own headers of every object file, from the log that ninja keeps of finished builds."""
    text = subprocess.run(["ninja", "-C", folder, "-t", "deps"], capture_output=True, text=True, check=True).stdout
    found, current = {}, None
    for line in text.splitlines():
        if line.startswith("    "):
            path = (folder / line.strip()).resolve()
            if path.is_relative_to(ROOT):
                found[current].append(path)
        elif ": #deps" in line:
            current = line.split(": #deps")[0]
            found[current] = []
    return found


def jobs_of(folder):
    for entry in json.loads((folder / "compile_commands.json").read_text()):
        source = pathlib.Path(entry["file"])
        if source.is_relative_to(ROOT) and not source.is_relative_to(folder):
            yield source, entry


def key_of(source, entry, headers, tool):
    digest = hashlib.sha256(tool)
    digest.update(entry["command"].replace(str(ROOT), ".").encode())
    for folder in source.parents:
        if folder.is_relative_to(ROOT):
            digest.update(file_hash(folder / ".clang-tidy"))
    for path in sorted({source, *headers}):
        digest.update(str(path.relative_to(ROOT)).encode() + file_hash(path))
    return digest.hexdigest()


def main():
    folder = pathlib.Path(sys.argv[1]).resolve()
    workers = int(sys.argv[2]) if len(sys.argv) > 2 else os.cpu_count()
    cache = pathlib.Path(os.environ.get("VESK_TIDY_CACHE") or ROOT / "build" / "tidy-cache")
    cache.mkdir(parents=True, exist_ok=True)
    tool = subprocess.run(["clang-tidy", "--version"], capture_output=True, check=True).stdout
    headers = dependencies(folder)
    waiting = []
    for source, entry in jobs_of(folder):
        output = entry.get("output") or shlex.split(entry["command"])[shlex.split(entry["command"]).index("-o") + 1]
        key = key_of(source, entry, headers.get(output, []), tool)
        if not (cache / key).exists():
            waiting.append((source, key))

    def check(job):
        source, key = job
        run = subprocess.run(["clang-tidy", "-p", str(folder), "--quiet", str(source)],
                             capture_output=True, text=True)
        if run.returncode == 0:
            (cache / key).touch()
        return source, run

    failures = 0
    with concurrent.futures.ThreadPoolExecutor(workers) as pool:
        for source, run in pool.map(check, waiting):
            if run.returncode != 0:
                failures += 1
                print(f"{source.relative_to(ROOT)}:\n{run.stdout}{run.stderr}", flush=True)
    print(f"clang-tidy: {len(waiting)} sources looked at, {failures} with findings")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
