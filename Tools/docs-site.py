#!/usr/bin/env python3
"""What surrounds Doxygen in the making of the documentation site.

    Tools/docs-site.py input     writes the public headers and the guides to build/docs/input as Doxygen reads them
    Tools/docs-site.py search    writes what Doxygen has found as the index of Docs/Site/site.js, and removes the
                                 files that the site does not use

The comments of the headers are plain text, written to be read in the headers. A comment holds for all
declarations that follow it without an empty line; Doxygen wants one for each.
"""
import json
import pathlib
import re
import sys
import xml.etree.ElementTree

ROOT = pathlib.Path(__file__).resolve().parent.parent
INPUT = ROOT / "build/docs/input"
SITE = ROOT / "build/docs/html"

# What a C++ programmer knows without a comment.
CONVENTIONS = [
    (r"operator<<\(std::ostream", "Prints the display form."),
    (r"operator(==|<=>)\(", "Compares."),
    (r"\boperator=\(", "Assigns."),
    (r" (\w+)\((const )?\1(<\w+>)?&&? ?\w*\)", "Copies or moves."),
    (r"\b(begin|end|size|empty|front|back)\(\) const", "As for other ranges."),
    (r"\busing Iterator =", "A random-access iterator."),
    (r"\b(lock|try_lock|unlock)\(\) \{", "For the standard lock guards."),
    (r" [A-Z]\w+\(detail::Handle", "Shares an object of the C interface."),
    (r"\* Get\(\) const noexcept", "The handle for the C interface, without a reference added."),
]
PARAGRAPHS = """Ownership Threads Failures Callbacks Memory Encodings Results Objects Options Syntax Columns Texts
  Writing Files""".split()


def comment(text):
    text = text.replace("%", r"\%")
    text = re.sub(r"(\w)<([^>`]*)>", r"\1\\<\2\\>", text)  # unordered_map<K, T> is no markup
    # A short description is the first sentence, and a number alone is none.
    text = re.sub(r"(///<? ?)(Slots? [\d, ]+(?:(?:to|and) \d+)?)\. ?", r"\1\2: ", text)
    text = text.replace("@throws", "@fails")  # the same list for both languages
    return re.sub(rf"^(/// )({'|'.join(PARAGRAPHS)})\. ", r"\1<b>\2.</b> ", text)


def convention(line):
    for pattern, text in CONVENTIONS:
        if re.search(pattern, line) and not line.strip().startswith("return"):
            return f"/** {text} */"
    return None


def name_of(line):
    match = re.search(r"(operator\W+|\w+) ?\(", line)
    return match[1] if match else None


def shares(path, block, documented, line):
    """Whether a declaration shares the comment of the one before."""
    if not block or indent(line) != indent(block[0]):
        return False
    if path.parent.name == "Interfaces" or path.name.startswith("layerdata") or line.startswith("#define"):
        return True
    # Elsewhere only overloads do.
    return name_of(line) == name_of(documented) and "() " not in documented and "@param" not in "".join(block)


def header(path, lines):
    previous, block, documented, in_std, in_group = "", [], "", False, False
    group_ends = -1
    for number, line in enumerate(lines):
        following = lines[number + 1] if number + 1 < len(lines) else ""
        stripped = line.strip()
        code, slashes, text = line.partition("///")
        section = re.match(r"// ---- (\w+) ----", line)
        handle = re.match(r"typedef struct (ld_\w+) \1;", line)
        if stripped == "#pragma once":
            line = "/** @file */"
        elif section or in_group and stripped == "#ifdef __cplusplus":
            yield from ["/// @}"] * in_group
            in_group = bool(section)
            if section:
                yield f"/// @defgroup group_{section[1]} {section[1]}"
                intro = number + 2 + next(n for n, l in enumerate(lines[number + 2:]) if not l.startswith("///"))
                if lines[intro]:  # the comment below is that of a function, not of the group
                    yield "/// @{"
                else:
                    group_ends = intro
                    line = "///"
        elif number == group_ends:
            yield "/// @{"
        elif not stripped and number < group_ends:
            continue
        elif not stripped:
            block = []
            if re.match(r'#define LAYERDATA_LAYERDATA\w*_H$|#include "Data/Version.h"', previous):
                line = "/// @file"  # the comment that follows is about the file
        elif slashes:
            line = code + comment(slashes + text)
            if not code.strip():
                block = [*block, line] if previous.startswith("///") else [line]
        elif stripped == "template <>" and following.startswith("struct std::"):
            line, in_std = "/** @cond */ " + line, True
        elif in_std and stripped == "};":
            line, in_std = line + " /** @endcond */", False
        elif re.match(r"[A-Za-z~]|#define", stripped) and (
                previous[-1:] in ("", ";", "}", ":", "{") or previous.startswith(("//", "#define"))):
            if handle and not previous.startswith("///"):
                yield f"/** A handle; see @ref group_{handle[1]}. */"
            elif convention(line) and not previous.startswith("///"):
                yield convention(line)
            elif previous.startswith("///"):
                documented = line
            elif shares(path, block, documented, line):
                yield from block
        elif name_of(line) and previous.startswith(("template", "requires")):
            documented = line
        previous = code.strip() if slashes and code.strip() else stripped
        yield line


def indent(line):
    return line[:len(line) - len(line.lstrip())]


def guide(lines, name):
    """Gives the page its name, and a long one a list of its sections."""
    if name == "index":
        return lines
    contents = ["", "[TOC]"] * (sum(line.startswith("## ") for line in lines) > 4)
    return [f"{lines[0]} {{#{name}}}", *contents, *lines[1:]]


def write_input():
    for path in [*(ROOT / "Include").rglob("*.h"), *(ROOT / "Docs/Guides").glob("*.md")]:
        lines = path.read_text().splitlines()
        target = INPUT / path.relative_to(ROOT)
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_text("\n".join(header(path, lines) if path.suffix == ".h" else guide(lines, path.stem)) + "\n")


def write_search_index():
    kinds = {"page": "guide", "enumvalue": "enumerator", "slot": "operation"}
    entries = {}
    for found in xml.etree.ElementTree.parse(ROOT / "build/docs/searchdata.xml").iter("doc"):
        field = {f.get("name"): f.text or "" for f in found.iter("field")}
        kind = kinds.get(field["type"], field["type"])
        entries[field["url"]] = [field["name"], kind, field["url"], " ".join(field["text"].lower().split())]
    index = json.dumps(list(entries.values()), ensure_ascii=False, separators=(",", ":"))
    (SITE / "search-index.js").write_text(f"window.searchIndex={index};\n")
    for pattern in ("*.png", "search*.html", "*.svg", "jquery.js", "dynsections.js", "tabs.css", "doxygen.css", "search/*"):
        for path in SITE.glob(pattern):
            path.unlink()
    (SITE / "search").rmdir()


{"input": write_input, "search": write_search_index}[sys.argv[1]]()
