#!/usr/bin/env python3
"""Checks the built libraries for what an exploit could use: check-hardening.py LIBRARY...

It finds missing protections, folder names and times of the build machine, and a DLL that does not
state its version. The GNU tools read both formats.
"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
VERSION = re.search(r"^project\(LayerData\s+VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text(), re.M)[1]


def output(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def elf(library):
    """Yields (name of the case, whether it holds)."""
    segments, dynamic = output("readelf", "-lW", library), output("readelf", "-dW", library)
    symbols, notes = output("nm", "-D", library), output("readelf", "-nW", library)
    yield "RelocationsAreReadOnly", "GNU_RELRO" in segments
    yield "SymbolsAreBoundAtOnce", re.search(r"FLAGS_1.*NOW", dynamic)
    yield "StackIsNotExecutable", re.search(r"GNU_STACK.* RW ", segments)
    yield "NoSegmentIsWritableCode", not re.search(r"LOAD.* RWE ", segments)
    yield "CodeHasNoRelocations", "TEXTREL" not in dynamic
    yield "SearchesNoFolders", not re.search(r"RPATH|RUNPATH", dynamic)
    yield "StackProtector", "__stack_chk_fail" in symbols
    yield "CheckedBuffers", re.search(r" __\w+_chk@", symbols)
    yield "ShadowStack", "SHSTK" in notes
    entries = re.findall(r"<((?:Data|ld)_\w+)>:\n.*\t(\w+)", output(
        "objdump", "-d", "--no-show-raw-insn", "-j", ".text", library))
    yield "EveryExportIsABranchTarget", entries and all(first == "endbr64" for _, first in entries)


def pe(library):
    headers = output("x86_64-w64-mingw32-objdump", "-p", library)
    symbols = output("x86_64-w64-mingw32-nm", library)
    characteristics = int(re.search(r"DllCharacteristics\s+(\w+)", headers)[1], 16)
    yield "HighEntropyAddresses", characteristics & 0x20
    yield "DynamicBase", characteristics & 0x40 and ".reloc" in headers
    yield "DataIsNotExecutable", characteristics & 0x100
    yield "StackProtector", "__stack_chk_fail" in symbols
    yield "CheckedBuffers", re.search(r" __mem\w+_chk$", symbols, re.M)
    yield "NoMoreDlls", "libssp" not in "".join(re.findall(r"DLL Name: .*", headers))
    yield "NoBuildTime", re.search(r"Time/Date stamp\s+0$|Time/Date\s+Thu Jan  1 00:00:00 1970", headers, re.M)
    yield "SaysItsVersion", f"ProductVersion\0{VERSION}\0".encode("utf-16-le") in library.read_bytes()


def main():
    good = True
    for library in map(pathlib.Path, sys.argv[1:]):
        cases = list(pe(library) if library.suffix == ".dll" else elf(library))
        cases.append(("NamesNoFolder", str(ROOT).encode() not in library.read_bytes()))
        for name, holds in cases:
            print(f"[{'       OK ' if holds else '  FAILED  '}] Hardening.{library.name}.{name} (0 ms)")
            good &= bool(holds)
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())
