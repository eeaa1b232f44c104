#!/usr/bin/env python3
"""Runs the program on the cases in the text files beside: run.py [EMULATOR] PROGRAM

A case begins with "== NAME", and stands in a folder of its own. Its parts:
  -- file NAME       a file; "\\xHH" and "\\t" in it are bytes
  -- input           standard input of the next run
  -- run ARGUMENTS   runs the program, with the quotes of a shell
  -- shell COMMAND   runs a command with bash, on Linux alone. In it $LAYERDATA is the program, and
                     `told COMMAND` prints the exit code and the messages of a command
  -- exit CODE       of the last run; 0 if not given
  -- output          what the last run wrote to standard output; not looked at if not given
  -- errors          what it wrote to standard error; nothing if not given
  -- content NAME    of a file after the last run, whatever its last line end
  -- linux           the case is for Linux alone
"""
import contextlib
import glob
import os
import re
import shlex
import signal
import subprocess
import sys
import tempfile
import time

PROGRAM = sys.argv[1:]
IS_NATIVE = len(PROGRAM) == 1
TOLD = 'told() { local said; said=$("$@" 2>&1 >"${to:-/dev/null}"); echo "$? $said" | grep -v "help tells"; }\n'
HERE = os.path.dirname(os.path.abspath(__file__))


def run(arguments, text=b""):
    return subprocess.run(PROGRAM + arguments, input=text, capture_output=True, check=False)


def as_bytes(text):
    pieces = re.split(r"(\\x[0-9a-f]{2}|\\t)", text)
    return b"".join(bytes([int(p[2:], 16)]) if p.startswith("\\x") else b"\t" if p == "\\t" else p.encode()
                    for p in pieces)


def parse(path):
    """Cases as (name, [(keyword, argument, text)])."""
    cases = []
    for line in open(path, encoding="utf-8").read().splitlines():
        if line.startswith("== "):
            cases.append((line[3:], []))
        elif line.startswith("-- "):
            keyword, _, argument = line[3:].partition(" ")
            cases[-1][1].append([keyword, argument, ""])
        elif cases and cases[-1][1]:
            cases[-1][1][-1][2] += line + "\n"
    return cases


class Case:
    def __init__(self):
        self.text, self.last, self.expected, self.faults = b"", None, {}, []

    def finish(self):
        """Compares the last run with what was expected of it."""
        if self.last is None:
            return
        expected = {"exit": 0, "errors": b""} | self.expected
        found = {"exit": self.last.returncode, "errors": self.last.stderr, "output": self.last.stdout}
        self.faults += [f"{what}: expected\n{expected[what]!r}\nfound\n{found[what]!r}"
                        for what in expected if expected[what] != found[what]]
        self.text, self.last, self.expected = b"", None, {}

    def take(self, keyword, argument, text):
        content = as_bytes(text.rstrip("\n") + "\n") if text.strip() else b""
        if keyword in ("file", "input", "run", "shell"):
            self.finish()
        if keyword == "file":
            open(argument, "wb").write(content)
        elif keyword == "input":
            self.text = content
        elif keyword == "run":
            self.last = run(shlex.split(argument), self.text)
        elif keyword == "shell":
            self.last = subprocess.run(["bash", "-o", "pipefail", "-c", TOLD + argument], capture_output=True, check=False,
                                       stdin=subprocess.DEVNULL, env=os.environ | {"LAYERDATA": PROGRAM[0]})
        elif keyword == "exit":
            self.expected["exit"] = int(argument)
        elif keyword in ("output", "errors"):
            self.expected[keyword] = content
        elif keyword == "content":
            found = open(argument, "rb").read()
            if found.rstrip(b"\n") != content.rstrip(b"\n"):
                self.faults.append(f"{argument}: expected\n{content!r}\nfound\n{found!r}")
        else:
            self.faults.append(f"unknown part: {keyword}")


def run_case(parts):
    case = Case()
    for part in parts:
        case.take(*part)
    case.finish()
    return case.faults


# -- What a text file cannot say --


def memory():
    """The peaks of reading a file, and of writing it to standard output, are those of the table."""
    row = "{0},station {0},47.{0},7.{0},{0}.5,{0},2024-01-31T08:00:00,a remark on station {0} that is long\n"
    with open("big.csv", "w", encoding="utf-8") as file:
        file.write("id,name,lat,lon,length,load,seen,note\n" + "".join(map(row.format, range(100000, 250000))) + "007,,,,,,,\n")
    faults, size, program = [], os.path.getsize("big.csv"), 24 << 20
    for arguments in (["-o", "out.json"], ["-t", "json"]):
        with subprocess.Popen(PROGRAM + ["convert", "big.csv", *arguments, "--text", "lat,lon"],
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as job:
            _, status, usage = os.wait4(job.pid, 0)
            job.returncode = os.waitstatus_to_exitcode(status)
        if job.returncode != 0 or usage.ru_maxrss * 1024 > 6 * size + program:
            faults.append(f"{arguments}: exit {job.returncode}, {usage.ru_maxrss} KB for {size} bytes")
    return faults


def interrupted_write():
    """Ctrl-C while a file is written: the old file stays, and nothing beside it."""
    with open("big.csv", "w", encoding="utf-8") as file:
        file.write("id,name,note\n" + "".join(f"{i},station {i},note {i}\n" for i in range(400000)))
    open("out.json", "w", encoding="utf-8").write("old")
    with subprocess.Popen(PROGRAM + ["convert", "big.csv", "-o", "out.json"], stderr=subprocess.PIPE) as job:
        while job.poll() is None and not any(os.path.getsize(f) for f in glob.glob("*.tmp") if os.path.exists(f)):
            time.sleep(0.001)
        job.send_signal(signal.SIGINT)
        errors = job.stderr.read()
    faults = [f"left behind: {name}" for name in glob.glob("*.tmp")]
    content = open("out.json", "rb").read()
    whole = content.startswith(b"[") and content.rstrip().endswith(b"]")
    if job.returncode == 130 and (content == b"old" or whole):
        return faults
    return faults + [f"exit {job.returncode}, {len(content)} bytes, {errors!r}"]


def html_is_one_page():
    open("data.csv", "w", encoding="utf-8").write("name,height\n<Eiger & co>,3967\nTitlis,\n")
    done = run(["describe", "data.csv", "--html", "page.html"])
    page = open("page.html", encoding="utf-8").read()
    faults = [f"not in the page: {text}" for text in ("&lt;Eiger &amp; co&gt;", "1 empty", "prefers-color-scheme", "</html>")
              if text not in page]
    if re.search(r"(src|href)=|https?://|<Eiger", page):
        faults.append("the page refers to something else, or text became markup")
    return faults + ([] if done.returncode == 0 and not done.stderr else [repr(done)])


def report(name, check, *arguments):
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        faults = check(*arguments)
        os.chdir(HERE)
    print("\n".join(faults + [f"[{'  FAILED  ' if faults else '       OK '}] Program.{name} (0 ms)"]))
    return not faults


@contextlib.contextmanager
def emulator_that_stays():
    """Holds one program open, because an emulator that starts anew for each run takes seconds."""
    if IS_NATIVE:
        yield
        return
    silent = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
    with subprocess.Popen(PROGRAM + ["show", "-"], stdin=subprocess.PIPE, **silent):
        # Its services would hold the pipes of the first run open, so they start here.
        subprocess.run(PROGRAM + ["--version"], check=True, **silent)
        yield


def main():
    PROGRAM[:] = [os.path.abspath(word) if os.path.exists(word) else word for word in PROGRAM]
    with emulator_that_stays():
        sys.exit(not all(check_everything()))


def check_everything():
    results = []
    for path in sorted(glob.glob(os.path.join(HERE, "*.txt"))):
        for name, parts in parse(path):
            if IS_NATIVE or not any(part[0] == "linux" for part in parts):
                results.append(report(name, run_case, [part for part in parts if part[0] != "linux"]))
    results.append(report("HTML is one page", html_is_one_page))
    if IS_NATIVE:
        if b"__asan_init" not in open(PROGRAM[0], "rb").read():
            results.append(report("Memory is at most six times the file", memory))
        results.append(report("Ctrl-C leaves no half file", interrupted_write))
    return results


main()
