#!/usr/bin/env python3
"""Compares the virtual tables and records of every public header with Tests/Binary/ExpectedSlots.txt.

clang lays the headers out for a Microsoft and for an Itanium target (no program is linked, nothing of
either system is needed), so that a slot that moves on any compiler is found here:

    check-layouts.py            compares, one line per interface and record and target
    check-layouts.py --print    prints the layouts of the Itanium target in the file's own form
"""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
EXPECTED = ROOT / "Tests/Binary/ExpectedSlots.txt"
TARGETS = {"Microsoft": "x86_64-pc-windows-msvc", "Itanium": "x86_64-pc-linux-gnu"}
RECORD_HEADERS = sorted((ROOT / "Include/Data/Structures").glob("*.h"))
INTERFACE_HEADERS = [ROOT / "Include/Core/IObject.h", ROOT / "Include/Core/IErrorCode.h"] + sorted(
    (ROOT / "Include/Data/Interfaces").glob("I*.h"))


def qualified(header):
    return f"{'Core' if header.parent.name == 'Core' else 'Data::Interfaces'}::{header.stem}"


def read_expected():
    """Maps each interface and record to its lines."""
    blocks, current = {}, None
    for line in EXPECTED.read_text().splitlines():
        if not line.strip() or line.startswith("#"):
            continue
        if line.startswith(" "):
            current.append(line.strip())
        else:
            current = blocks.setdefault(line.strip(), [])
    return blocks


def probe(interfaces, records):
    """A source that makes clang lay everything out; a constructor needs the tables of its bases."""
    lines = [f'#include "{header.relative_to(ROOT / "Include")}"'
             for header in INTERFACE_HEADERS + RECORD_HEADERS]
    for number, name in enumerate(interfaces):
        lines += [f"struct Probe{number} : {name} {{ Probe{number}(); }};",
                  f"Probe{number}::Probe{number}() {{}}"]
    lines += [f"unsigned long long size{number} = sizeof({name});"
              for number, name in enumerate(records)]
    return "\n".join(lines) + "\n"


def dump(target, source):
    clang = shutil.which("clang++") or shutil.which("clang++-14")
    resources = subprocess.run([clang, "-print-resource-dir"], capture_output=True, text=True,
                               check=True).stdout.strip()
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder) / "probe.cpp"
        file.write_text(source)
        run = subprocess.run(
            [clang, f"--target={target}", "-std=c++20", "-ffreestanding", "-nostdinc", "-isystem",
             f"{resources}/include", "-I", ROOT / "Include", "-S", "-emit-llvm", "-o", "/dev/null",
             "-Xclang", "-fdump-vtable-layouts", "-Xclang", "-fdump-record-layouts-simple", file],
            capture_output=True, text=True)
    if run.returncode != 0:
        sys.exit(f"[  FAILED  ] Layouts.{target} (0 ms)\nThe public headers do not compile alone:\n"
                 + run.stderr)
    return run.stdout


def slots_of(text):
    """Maps each interface to its own operations, 'slot result name(arguments)'."""
    tables = {}
    # "VFTable for 'Base' in 'Interface' (n entries)." here, "Vtable for 'Interface' (n entries)." there.
    for match in re.finditer(r"^VF?[Tt]able for (.*) \(\d+ entries\)\.\n((?:.+\n)+)", text, re.M):
        name = re.findall(r"'([^']+)'", match[1])[-1]
        entries = re.findall(r"^ *\d+ \| (.*)$", match[2], re.M)
        rtti = next(i for i, entry in enumerate(entries) if entry.endswith(" RTTI"))
        tables[name] = [f"{slot} {plain(entry)}" for slot, entry in enumerate(entries[rtti + 1:])]
    return tables


def plain(entry):
    """The entry without namespaces and without the class that declares it."""
    return re.sub(r"\w+::", "", entry.replace(" [pure]", ""))


def records_of(text):
    """Maps each record to 'size n, alignment n' and its fields' offsets in bits."""
    records = {}
    for match in re.finditer(r"^Type: (?:struct |union |class )?(\S+)\n\nLayout: <ASTRecordLayout\n(.*?)>$",
                             text, re.M | re.S):
        size, alignment = (int(re.search(rf"{key}:(\d+)", match[2])[1]) // 8
                           for key in (r"\bSize", r"\bAlignment"))
        offsets = re.search(r"FieldOffsets: \[([\d, ]*)\]", match[2])[1]
        offsets = ", ".join(str(int(bits) // 8) for bits in offsets.split(",") if bits.strip())
        records[match[1]] = [f"size {size}, alignment {alignment}, fields at {offsets}"]
    return records


def as_contract(lines):
    """Sorted per name, because Microsoft compilers reverse overloads, which callers cannot notice."""
    return sorted((re.sub(r"^\d+ ", "", line) for line in lines)), [
        re.sub(r"\(.*", "", re.sub(r"^(\d+) .*?(\w+\()", r"\1 \2", line)) for line in lines]


def report(name, problems):
    print(f"[ RUN      ] {name}")
    for problem in problems:
        print(problem)
    print(f"[  FAILED  ] {name} (0 ms)" if problems else f"[       OK ] {name} (0 ms)")
    return not problems


def compare(expected, found):
    if as_contract(expected) == as_contract(found):
        return []
    return [f"  expected {line}" for line in expected if line not in found] + [
        f"  found    {line}" for line in found if line not in expected]


def main():
    interfaces = [qualified(header) for header in INTERFACE_HEADERS]
    expected = read_expected() if EXPECTED.exists() else {}
    records = [name for name in expected if "::Structures::" in name]
    if "--print" in sys.argv:
        text = dump(TARGETS["Itanium"], probe(interfaces, records))
        tables = slots_of(text)
        for name in interfaces:
            own = [line for line in tables[name] if line not in tables["Core::IObject"]]
            print("\n  ".join([name] + (own or tables[name])) + "\n")
        return 0
    good = report("Layouts.EveryInterfaceIsExpected",
                  [f"  {name} has no slots in {EXPECTED.name}" for name in interfaces
                   if name not in expected]
                  + [f"  {name} has no header" for name in expected
                     if name not in interfaces and name not in records])
    root = expected["Core::IObject"]
    for compiler, target in TARGETS.items():
        text = dump(target, probe(interfaces, records))
        found = {**records_of(text), **slots_of(text)}
        for name, lines in expected.items():
            whole = lines if name in records or name == "Core::IObject" else root + lines
            good &= report(f"Layouts.{compiler}.{name}", compare(whole, found.get(name, [])))
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
