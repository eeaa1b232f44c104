#!/usr/bin/env python3
"""Compiles and runs the code of the guides and of the README, and compares what it prints.

    Tools/check-docs.py [--write] [FILE.md ...]     without files: README.md and Docs/Guides/*.md

The code is in fenced blocks of the languages `cpp` and `c`. The next block, if its language is
`output`, is what the code prints; without one it prints nothing.

  - A block with `int main(` is a program of its own, and is compiled as it stands.
  - A block that begins with `#include` but has no main is only compiled.
  - Any other block is a fragment. The fragments of a page that have the same language are one
    program, which begins as PROLOGUES says. They stand in main: those before the first `##` heading
    first, those below each heading in braces of their own.
  - A block of the language `sh` with an output block is run by bash, with the program `layerdata` at
    hand. What it prints on standard error counts, too.
  - A block of the language `csv` is a file in the folder in which the programs run. Its name is the
    last one in backquotes before the block.

--write puts what the code prints into the output blocks instead of comparing it.
The libraries are those of build/release. CXX and CC choose other compilers.
"""
import difflib
import os
import pathlib
import re
import shlex
import subprocess
import sys
import time
from concurrent.futures import ThreadPoolExecutor

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build/docs/code"
RUN = WORK / "run"
LIBRARIES = ROOT / "build/release/lib"
PROGRAMS = ROOT / "build/release/bin"
WARNINGS = ["-Wall", "-Wextra", "-Werror", "-Wno-unused-variable", "-Wno-unused-but-set-variable"]
COMPILERS = {
    "cpp": [os.environ.get("CXX", "g++"), "-std=c++20", "-O0", *WARNINGS, f"-I{ROOT}/Include"],
    "c": [os.environ.get("CC", "gcc"), "-std=c99", "-O0", *WARNINGS, f"-I{ROOT}/Include"],
}
LINK = [f"-L{LIBRARIES}", "-llayerdata", "-llayerdata-c", f"-Wl,-rpath,{LIBRARIES}", "-lm"]

STANDARD = """algorithm chrono cstdint cstring fstream functional iostream map numeric optional ranges
  sstream stdexcept string string_view thread unordered_map unordered_set vector"""
PROLOGUES = {
    "cpp": "".join(f"#include <{name}>\n" for name in STANDARD.split())
    + "".join(f'#include <LayerData/{path.name}>\n'
              for path in sorted((ROOT / "Include/LayerData").glob("[A-Z]*.h")))
    + "".join(f'#include "{path.relative_to(ROOT / "Include")}"\n'
              for path in sorted((ROOT / "Include/Data/Interfaces").glob("*.h")))
    + '#include "Data/Exports.h"\n#include "Data/Ranges.h"\n'
    + "using namespace layerdata;\nusing namespace Data::Interfaces;\n"
    + "using namespace std::chrono_literals;\n",
    "c": "#include <LayerData/layerdata.h>\n#include <inttypes.h>\n#include <stdio.h>\n"
    + "#include <stdlib.h>\n#include <string.h>\n",
}
MARK = "\x1e"  # printed before what a fragment prints


class Block:
    def __init__(self, page, language, line, section):
        self.page, self.language, self.line, self.section = page, language, line, section
        self.lines = []
        self.output = None  # the block of the language output

    @property
    def code(self):
        return "".join(self.lines)

    @property
    def expected(self):
        return self.output.code if self.output else ""

    @property
    def place(self):
        return f"{self.page.relative_to(ROOT)}:{self.line}"


def read_blocks(page):
    """All fenced blocks of a page, and the files that it names."""
    blocks, files, block, section, name = [], {}, None, 0, None
    for number, line in enumerate(page.read_text().splitlines(keepends=True), 1):
        fence = re.match(r"```(\S*)", line)
        if block is not None:
            if fence:
                block = None
            else:
                block.lines.append(line)
        elif fence:
            block = Block(page, fence[1], number + 1, section)
            if block.language == "output" and blocks and blocks[-1].language in [*COMPILERS, "sh"]:
                blocks[-1].output = block
            if block.language == "csv":
                files[name] = block
            blocks.append(block)
        else:
            section += line.startswith("## ")
            name = (re.findall(r"`([^`]+\.\w+)`", line) or [name])[-1]
    return [b for b in blocks if b.language in COMPILERS or b.language == "sh" and b.output], files


class Program:
    """Blocks that are compiled together."""

    def __init__(self, name, language, blocks, is_whole):
        self.name, self.language, self.blocks, self.is_whole = name, language, blocks, is_whole
        self.path = WORK / f"{name}.{language}"
        self.problems = []

    @property
    def is_run(self):
        return not self.is_whole or "int main(" in self.blocks[0].code

    def source(self):
        if self.is_whole:
            return self.placed(self.blocks[0])
        is_c = self.language == "c"
        flush = "fflush(stdout);" if is_c else "std::cout.flush();"
        body, section = "", 0
        for block in self.blocks:
            if block.section != section:
                body += ("}\n" if section else "") + "{\n"
                section = block.section
            body += f'{flush} puts("{MARK}"); fflush(stdout);\n' + self.placed(block)
        body += "}\n" if section else ""
        if is_c:
            return f"{PROLOGUES['c']}int main(void) {{\n{body}  return 0;\n}}\n"
        return ("int main() try {\n" + body + "} catch (const std::exception& error) {\n"
                '  std::cout << "NOT CAUGHT: " << error.what() << std::endl;\n  return 1;\n}\n')

    def placed(self, block):
        return f'#line {block.line} "{block.page}"\n{block.code}'

    def check(self):
        start = time.monotonic()
        if self.language == "sh":
            self.run_commands()
        else:
            self.compile_and_run()
        self.milliseconds = int(1000 * (time.monotonic() - start))
        return self

    def run_commands(self):
        """The blocks of a page one after another, as a reader types them."""
        commands = "exec 2>&1\n" + "".join(f"echo '{MARK}'\n{block.code}" for block in self.blocks) + "exit 0\n"
        environment = {**os.environ, "PATH": f"{PROGRAMS}:{os.environ['PATH']}"}
        self.compare(subprocess.run(["bash", "-c", commands], cwd=RUN, env=environment, capture_output=True, timeout=60))

    def compile_and_run(self):
        self.path.write_text(self.source())
        prologue = [] if self.is_whole or self.language == "c" else ["-include", str(WORK / "prologue.h")]
        command = COMPILERS[self.language] + prologue + [str(self.path)]
        program = self.path.with_suffix("")
        command += ["-o", str(program), *LINK] if self.is_run else ["-fsyntax-only"]
        compiled = subprocess.run(command, capture_output=True, text=True)
        if compiled.returncode:
            self.problems.append(shlex.join(command) + "\n" + compiled.stderr)
        elif self.is_run:
            self.compare(subprocess.run([str(program)], cwd=RUN, capture_output=True, timeout=60))

    def compare(self, run):
        printed = run.stdout.decode(errors="replace")
        parts = [printed] if self.is_whole else printed.split(MARK + "\n")[1:]
        for block, found in zip(self.blocks, parts + [""] * len(self.blocks)):
            block.found = found if found.endswith("\n") or not found else found + "\n"
            if block.found != block.expected:
                self.problems.append(f"{block.place} prints\n" + "".join(difflib.unified_diff(
                    block.expected.splitlines(True), block.found.splitlines(True), "expected", "found")))
        if run.returncode:
            place = self.blocks[max(0, min(len(parts), len(self.blocks)) - 1)].place
            self.problems.append(f"{place} ends with code {run.returncode}\n{run.stderr.decode(errors='replace')}")


def programs_of(page):
    blocks, files = read_blocks(page)
    for name, block in files.items():
        (RUN / name).write_text(block.code)
    name = page.stem
    programs = []
    for language in [*COMPILERS, "sh"]:
        mine = [b for b in blocks if b.language == language]
        whole = [b for b in mine if language != "sh" and ("int main(" in b.code or b.code.startswith("#include"))]
        programs += [Program(f"{name}_{b.line}", language, [b], True) for b in whole]
        fragments = [b for b in mine if b not in whole]
        if fragments:
            programs.append(Program(f"{name}_{language}", language, fragments, False))
    return programs


def compile_prologue():
    """The headers of the fragments, precompiled."""
    header = WORK / "prologue.h"
    header.write_text(PROLOGUES["cpp"])
    subprocess.run([*COMPILERS["cpp"], "-x", "c++-header", str(header), "-o", f"{header}.gch"], check=True)


def write_outputs(programs):
    for page in {block.page for program in programs for block in program.blocks}:
        lines = page.read_text().splitlines(keepends=True)
        blocks = [b for p in programs for b in p.blocks
                  if b.page == page and b.output and hasattr(b, "found")]
        for block in sorted(blocks, key=lambda b: -b.line):
            first = block.output.line - 1
            lines[first:first + len(block.output.lines)] = block.found.splitlines(keepends=True)
        page.write_text("".join(lines))


def main():
    arguments = sys.argv[1:]
    write = "--write" in arguments
    pages = [pathlib.Path(a).resolve() for a in arguments if a != "--write"]
    pages = pages or [ROOT / "README.md", *sorted((ROOT / "Docs/Guides").glob("*.md"))]
    RUN.mkdir(parents=True, exist_ok=True)
    compile_prologue()
    programs = [program for page in pages for program in programs_of(page)]
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        programs = list(pool.map(Program.check, programs))
    for program in programs:
        print("\n".join(program.problems), end="")
        result = "  FAILED  " if program.problems else "       OK "
        print(f"[{result}] Code.{program.name} ({program.milliseconds} ms)")
    if write:
        write_outputs(programs)
    blocks = [block for program in programs for block in program.blocks]
    run = sum(len(program.blocks) for program in programs if program.is_run)
    print(f"{len(blocks)} code blocks of {len(pages)} pages, {run} of them run.")
    sys.exit(any(program.problems for program in programs))


main()
