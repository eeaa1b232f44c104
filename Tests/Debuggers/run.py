#!/usr/bin/env python3
"""Checks what debuggers show: run.py GDB PROGRAM PROJECT LIBRARY..."""
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

GDB, PROGRAM, PROJECT = sys.argv[1:4]
LIBRARIES = [pathlib.Path(os.path.realpath(library)) for library in sys.argv[4:]]
DEBUGGERS = pathlib.Path(PROJECT, "Debuggers")


def gdb(*options):
    commands = ["set confirm off", "break StopHere", "run", "up", "info locals", "continue", "up", "info locals"]
    arguments = [word for command in commands for word in ("-ex", command)]
    done = subprocess.run([GDB, "-batch", "-nx", "-iex", "set debuginfod enabled off", *options, *arguments, PROGRAM],
                          capture_output=True, text=True, check=False)
    # Addresses differ from run to run.
    lines = [re.sub(r"0x[0-9a-f]+", "ADDRESS", line) for line in done.stdout.splitlines() if re.match(r"\w+ = ", line)]
    return "\n".join(lines) + "\n", done.stderr


def printers(folder):
    """The printers are installed as CMake installs them, and found by gdb itself."""
    for library in LIBRARIES:
        script = pathlib.Path(f"{folder}/auto-load{library}-gdb.py")
        script.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(DEBUGGERS / "layerdata-gdb.py", script)
    shown, errors = gdb("-iex", f"set auto-load scripts-directory {folder}/auto-load",
                        "-iex", f"set auto-load safe-path {folder}")
    expected = pathlib.Path(__file__).with_name("Expected.txt").read_text(encoding="utf-8")
    return [] if shown == expected else [f"expected\n{expected}\nfound\n{shown}\n{errors}"]


def natvis(_):
    """The types and members that the description names are in the headers."""
    headers = "".join(path.read_text(encoding="utf-8") for path in pathlib.Path(PROJECT, "Include").rglob("*.h"))
    faults = []
    for element in xml.etree.ElementTree.parse(DEBUGGERS / "layerdata.natvis").iter():
        if element.tag.endswith("Type"):
            name = element.get("Name").split("<")[0].split("::")[-1]
            if not re.search(rf"\b(class|struct) {name}\b", headers):
                faults.append(f"there is no type {name}")
        for name in re.findall(r"\b[a-z]+_\b", element.text or ""):
            if not re.search(rf"\b{name}[;{{ ]", headers):
                faults.append(f"there is no member {name}")
    return faults


def main():
    failed = False
    for check in (printers, natvis):
        with tempfile.TemporaryDirectory() as folder:
            faults = check(os.path.realpath(folder))
        print("\n".join(faults + [f"[{'  FAILED  ' if faults else '       OK '}] Debuggers.{check.__name__} (0 ms)"]))
        failed |= bool(faults)
    sys.exit(failed)


main()
