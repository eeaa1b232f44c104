#!/usr/bin/python3
"""Times reading and writing beside DuckDB, polars and pandas, in one sitting. compare.sh runs it.

    compare.py [--check] [--chart FILE] [--megabytes N] [--rounds N] [ROW...]

Each engine in turn runs a task several times in a process of its own, pinned to as many processors as it may
use threads; so do all rounds. A figure is the median of a process, and of these the least of all rounds. With
the name of a row, only this row is measured.

--check    exit code 1 if a ratio misses its target by more than 10 %
--chart    writes the bars of all rows to an SVG file
"""
import argparse
import os
import statistics
import subprocess
import sys
from pathlib import Path
from typing import NamedTuple

FOLDER = Path(__file__).resolve().parent
BUILD = FOLDER.parent / "build/benchmarks"
PEERS = FOLDER.parent / "build/peers"
ENGINES = ["ours", "duckdb", "polars", "pandas"]


class Row(NamedTuple):
    task: str
    data: str
    peer: str  # with which the target compares
    target: float  # our time divided by the peer's
    threads: int = 1
    is_first: bool = False  # only the first run of each process counts

    def __str__(self):
        extra = (" first" if self.is_first else "") + (f" {self.threads} threads" if self.threads > 1 else "")
        return f"{self.task} {self.data}{extra}"


ROWS = [
    Row("csv-read", "mixed", "duckdb", 0.45),
    Row("csv-read", "numbers", "polars", 0.75),
    Row("csv-read", "dates", "duckdb", 0.55),
    Row("csv-read", "text", "polars", 1.0),
    Row("csv-read", "mixed", "duckdb", 0.45, is_first=True),
    Row("csv-read", "mixed", "polars", 1.0, threads=2),
    Row("csv-read", "numbers", "polars", 1.0, threads=2),
    Row("csv-write", "mixed", "polars", 0.75),
    Row("csv-write", "numbers", "polars", 1.2),
    Row("csv-write", "dates", "polars", 0.40),
    Row("csv-write", "text", "polars", 0.95),
    Row("json-write", "mixed", "polars", 0.95),
    Row("json-read", "mixed", "duckdb", 0.45),
]


def data_file(row, megabytes):
    """The file that a row reads; made when it is missing."""
    csv = BUILD / f"data-{megabytes}" / f"{row.data}.csv"
    if not csv.exists():
        csv.parent.mkdir(exist_ok=True)
        kind = subprocess.run([BUILD / "bin/MakeTable", row.data, str(megabytes)], check=True, stdout=subprocess.PIPE)
        csv.write_bytes(kind.stdout)
    if row.task != "json-read":
        return csv
    json = csv.with_suffix(".json")
    if not json.exists():
        subprocess.run([BUILD / "bin/layerdata", "convert", "--quiet", csv, "-o", json], check=True)
    return json


def milliseconds(engine, row, file, runs):
    """The time of a run in a new process; None if the engine fails."""
    numbers = [str(runs), str(row.threads)]
    command = {
        "ours": [BUILD / "bin/OurTimes", row.task, file, *numbers],
        "duckdb": ["node", "--expose-gc", FOLDER / "Peers/node_times.cjs", "duckdb", row.task, file, *numbers],
        "polars": ["node", "--expose-gc", FOLDER / "Peers/node_times.cjs", "polars", row.task, file, *numbers],
        "pandas": ["/usr/bin/python3", FOLDER / "Peers/pandas_times.py", row.task, file, str(runs)],
    }[engine]
    processors = sorted(os.sched_getaffinity(0))[-row.threads:]
    environment = dict(os.environ, NODE_PATH=str(PEERS / "node_modules"), POLARS_MAX_THREADS=str(row.threads),
                       OMP_NUM_THREADS="1")
    done = subprocess.run(["taskset", "-c", ",".join(map(str, processors)), *command], env=environment,
                          capture_output=True, text=True, check=False)
    times = [float(line) for line in done.stdout.split()]
    if done.returncode != 0 or not times:
        print(f"{engine} failed at {row}: {done.stderr[:200]}", file=sys.stderr)
        return None
    return statistics.median(times[1:] or times)


def measure(row, arguments):
    """The least time of each engine that has not failed."""
    file = data_file(row, arguments.megabytes)
    engines = [e for e in ENGINES if e != "pandas" or row.threads == 1]
    times = {}
    for _ in range(arguments.rounds):
        for engine in engines:
            # Memory that was handed back to the system answers its first touch slowly: one process is discarded.
            if row.is_first:
                milliseconds(engine, row, file, 1)
            time = milliseconds(engine, row, file, 1 if row.is_first else 6)
            if time is not None:
                times[engine] = min(time, times.get(engine, time))
    return times


def draw(results, path):
    import matplotlib  # pylint: disable=import-outside-toplevel
    matplotlib.use("svg")
    from matplotlib import pyplot  # pylint: disable=import-outside-toplevel
    grey = "#808080"  # is seen on white and on black
    pyplot.rcParams.update({"text.color": grey, "axes.edgecolor": grey, "axes.labelcolor": grey,
                            "xtick.color": grey, "ytick.color": grey, "svg.hashsalt": "layerdata"})
    figure, axes = pyplot.subplots(figsize=(8, 0.5 + 0.55 * len(results)))
    names = {"ours": "LayerData", "duckdb": "DuckDB", "polars": "polars", "pandas": "pandas"}
    colors = {"ours": "#2a7fd4", "duckdb": "#d9a520", "polars": "#9a6fc0", "pandas": "#7a9a7a"}
    most = 3.5  # longer bars end at the edge, with their figure
    for number, engine in enumerate(ENGINES):
        for i, (_, times) in enumerate(results):
            if engine not in times:
                continue
            ratio = times[engine] / times["ours"]
            place = i + (number - 1.5) * 0.2
            axes.barh(place, min(ratio, most), 0.18, color=colors[engine], label=names[engine] if i == 0 else None)
            axes.text(min(ratio, most) + 0.02, place, f"{times[engine]:.0f} ms", va="center", fontsize=6)
    axes.set_yticks(range(len(results)), [str(row) for row, _ in results])
    axes.invert_yaxis()
    axes.set_xlim(0, most + 0.4)
    axes.set_xlabel("time, LayerData = 1; less is better")
    axes.spines[["top", "right"]].set_visible(False)
    axes.legend(frameon=False, loc="lower center", bbox_to_anchor=(0.4, 1), ncols=len(names), fontsize=8)
    figure.savefig(path, transparent=True, bbox_inches="tight", metadata={"Date": None})


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--chart")
    parser.add_argument("--megabytes", type=int, default=50)
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("rows", nargs="*", choices=[[], *map(str, ROWS)], metavar="ROW")
    arguments = parser.parse_args()
    results, misses = [], []
    print(f"{'milliseconds':28}" + "".join(f"{engine:>9}" for engine in ENGINES) + "   ours/peer  target")
    for row in ROWS:
        if arguments.rows and str(row) not in arguments.rows:
            continue
        times = measure(row, arguments)
        results.append((row, times))
        cells = "".join(f"{times[engine]:9.0f}" if engine in times else f"{'-':>9}" for engine in ENGINES)
        ratio = times["ours"] / times[row.peer] if row.peer in times else None
        verdict = f"{ratio:6.2f} {row.peer}" if ratio else "     - " + row.peer
        print(f"{str(row):28}{cells}{verdict:>14}{row.target:6.2f}", flush=True)
        if ratio is None or ratio > 1.1 * row.target:
            misses.append(str(row))
    if arguments.chart:
        draw(results, arguments.chart)
    if misses:
        print("Missed by more than 10 %: " + ", ".join(misses))
    return 1 if arguments.check and misses else 0


if __name__ == "__main__":
    sys.exit(main())
