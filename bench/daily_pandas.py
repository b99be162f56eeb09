"""The daily CSV of vesk4-batch with pandas: read_fwf and groupby, one file after the other."""
import pathlib
import sys

import pandas as pd

COLUMNS = {"kind": (0, 3), "date": (0, 10), "time": (12, 17), "xdate": (4, 14), "xtime": (15, 20), "level": (22, 27)}


def clock(times):
    return times.replace({"24:00": "23:59", "00:00": "23:59"})


def daily(path):
    lines = pd.read_fwf(path, colspecs=list(COLUMNS.values()), names=list(COLUMNS), skiprows=15, skipfooter=1,
                        dtype=str, engine="python", encoding="cp1254")
    lines["cm"] = (lines["level"].astype(float) * 100).round().astype(int)
    extreme = lines["kind"].isin(["Max", "Min"])
    readings = lines[~extreme].copy()
    readings["time"] = clock(readings["time"])
    minute = readings["time"].str.slice(0, 2).astype(int) * 60 + readings["time"].str.slice(3, 5).astype(int)
    readings["minute"] = minute
    before = readings.groupby("date", sort=False)["minute"].shift(fill_value=0)
    readings["weighted"] = readings["cm"] * (minute - before)
    days = readings.groupby("date", sort=False).agg(
        readings=("cm", "size"), weighted_sum=("weighted", "sum"), last_minute=("minute", "last"))
    for word in ("Max", "Min"):
        records = lines[lines["kind"] == word].set_index("xdate")
        days[word + "_time"] = clock(records["xtime"])
        days[word + "_cm"] = records["cm"]
    days["mean"] = (days["weighted_sum"] / days["last_minute"] + 0.5).astype(int)
    days["date"] = days.index
    days["station"] = path.name[4:9]
    days["year"] = days["date"].str.slice(6, 10).astype(int) + (days["date"].str.slice(3, 5).astype(int) > 9)
    return days[["station", "year", "date", "Max_time", "Max_cm", "Min_time", "Min_cm", "mean", "readings",
                 "weighted_sum", "last_minute"]]


for file in sorted(pathlib.Path(sys.argv[1]).glob("*.txt")):
    daily(file).to_csv(sys.stdout, header=False, index=False)
