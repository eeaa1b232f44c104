#!/usr/bin/env python3
"""What surrounds Doxygen in the making of the documentation site.

    Tools/docs-site.py input     writes the public headers and the guides to build/docs/input as Doxygen reads them
    Tools/docs-site.py finish    writes what Doxygen has found as the index of Docs/Site/site.js, mends what Doxygen
                                 cannot be told, and removes the files that the site does not use

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
        enumeration = re.match(r"typedef (u?int32_t) (ld_\w+);", line)
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
        elif enumeration and following == "enum {":
            yield from ["///", f"/// It is a `{enumeration[1]}` in every signature and record."]
            line = ""
        elif stripped == "enum {" and (named := re.match(r"typedef u?int32_t (ld_\w+);", lines[number - 1])):
            line = f"enum {named[1]} {{"
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
    for path in [*(ROOT / "Include").rglob("*.h"), *(ROOT / "Docs/Guides").glob("*.md"), *(ROOT / "Docs/Site").glob("*.dox")]:
        lines = path.read_text().splitlines()
        target = INPUT / path.relative_to(ROOT)
        target.parent.mkdir(parents=True, exist_ok=True)
        if path.suffix == ".h":
            lines = header(path, lines)
        elif path.suffix == ".md":
            lines = guide(lines, path.stem)
        target.write_text("\n".join(lines) + "\n")


def without_strings(code):
    """Doxygen does not see where a raw string ends; such code goes without the color of strings."""
    if 'R<span class="stringliteral">' not in code[0]:
        return code[0]
    return re.sub(r'<span class="stringliteral">(.*?)</span>', r"\1", code[0])


def finish_site():
    kinds = {"page": "guide", "enumvalue": "enumerator", "group": "C object"}
    titles = {path.stem: path.read_text().splitlines()[0].removeprefix("# ")
              for path in (ROOT / "Docs/Guides").glob("*.md")}
    entries = {}
    for found in xml.etree.ElementTree.parse(ROOT / "build/docs/searchdata.xml").iter("doc"):
        field = {f.get("name"): f.text or "" for f in found.iter("field")}
        kind = kinds.get(field["type"], field["type"])
        name = field["name"].removeprefix("group_")
        if kind == "guide":
            name = titles.get(name, name)
        entries[field["url"]] = [name, kind, field["url"], " ".join(field["text"].lower().split())]
    index = json.dumps(list(entries.values()), ensure_ascii=False, separators=(",", ":"))
    (SITE / "search-index.js").write_text(f"window.searchIndex={index};\n")
    for page in SITE.glob("*.html"):
        text = re.sub(r'<div class="fragment">.*?</div><!-- fragment -->', without_strings, page.read_text(), flags=re.DOTALL)
        page.write_text(re.sub(r' onclick="[^"]*"><img src="closed.png"[^>]*>(&#160;)?', ">", text))
    modules = SITE / "modules.html"
    modules.write_text(modules.read_text().replace("Modules", "C objects").replace(
        "Here is a list of all modules:", "A page for each kind of object:"))
    for pattern in ("*.png", "search*.html", "*.svg", "jquery.js", "dynsections.js", "tabs.css", "doxygen.css", "search/*"):
        for path in SITE.glob(pattern):
            path.unlink()
    (SITE / "search").rmdir()
    missing = {f"{page.name}: {link}" for page in SITE.glob("*.html")
               for link in re.findall(r'(?:href|src)="([^":#]+)', page.read_text()) if not (SITE / link).exists()}
    if missing:
        sys.exit("Links to nothing:\n" + "\n".join(sorted(missing)))


{"input": write_input, "finish": finish_site}[sys.argv[1]]()
