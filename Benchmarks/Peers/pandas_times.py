#!/usr/bin/python3
"""pandas_times.py TASK FILE RUNS: as OurTimes, for pandas, which has one thread."""
import gc
import io
import sys
import time

import pandas

DATES = {"mixed.csv": ["inspected"], "dates.csv": ["day", "moment", "utc", "exact"]}

task, path, runs = sys.argv[1], sys.argv[2], int(sys.argv[3])
with open(path, "rb") as file:
    text = file.read()


def read_csv():
    return pandas.read_csv(io.BytesIO(text), parse_dates=DATES.get(path.rsplit("/", 1)[-1], False))


table = read_csv() if task.endswith("write") else None
RUN = {
    "csv-read": read_csv,
    "json-read": lambda: pandas.read_json(io.BytesIO(text), orient="records"),
    "csv-write": lambda: table.to_csv(index=False),
    "json-write": lambda: table.to_json(orient="records", date_format="iso"),
}[task]
for _ in range(runs):
    gc.collect()
    start = time.perf_counter()
    made = RUN()
    print(f"{(time.perf_counter() - start) * 1e3:.2f}")
    del made
