#!/usr/bin/env python3
"""Writes the C interface from the public C++ headers.

    generate-c.py          writes the header, its implementation and a table of calls for the tests
    generate-c.py --check  fails if one of them is not what it would write

Every export and every operation of an interface becomes one function, with the documentation of the
header. The parts that no header determines are in Source/C/layerdata.h.in and in the tables below.
"""
import argparse
import json
import pathlib
import re
import shutil
import subprocess
import sys
import textwrap

ROOT = pathlib.Path(__file__).resolve().parent.parent
INCLUDE = ROOT / "Include"
HEADER = INCLUDE / "LayerData/layerdata.h"
SOURCE = ROOT / "Source/C/Generated.inc"
CALLS = ROOT / "Tests/C/Calls.inc"
VERSION = INCLUDE / "Data/Version.h"
TEMPLATE = ROOT / "Source/C/layerdata.h.in"

# Names in C, where they are not the words of the name in C++.
C_NAMES = {"_VARIANT": "ld_variant", "_UUID": "ld_uuid", "IErrorCode": "ld_error", "char16_t": "uint16_t"}
C_WORDS = {"Iso8601": "iso8601", "MD5": "md5", "Sha1": "sha1", "Sha2": "sha2", "Base64": "base64",
           "UInt": "uint", "SByte": "sbyte"}
# Written by hand in Source/C, because their form in C is another one.
BY_HAND = {"IErrorCode": None, "IObject": {"AddReference", "Release", "Destroy"}, "ITable": {"MergeOnColumns"}}
# The buffer that it returns is of no use.
WITHOUT_RESULT = {("IString", "Clear")}
# Calls that take another way than the operation itself.
OTHER_CALLS = {
    ("IObject", "Unlock"): "Unlock(target)",
    ("ITable", "GetCell"): "GetCell(target, {arguments})",
    ("ITable", "InsertColumn"): "InsertColumnAtEnd(target, {arguments})",
    ("", "Data_UuidFromString"): "ReadUuid({arguments})",
    ("", "Data_UuidToString"): "WriteUuid({arguments})",
}
OTHER_DOCS = {
    ("IObject", "Unlock"): 'Unlocks the mutex. Fails with "The object is not locked!" if no thread holds it.',
    ("ITable", "GetCell"): "Reads a cell.",
    ("ITable", "InsertColumn"): 'Appends a column, as `AddColumn` does. Fails with "Columns can only be '
                                'added at the end [%d/%d]!" for an `index` below the column count.',
}
OTHER_INTERFACE_DOCS = {
    "IObject": "Any object. Each has a mutex of its own, which is not recursive and which the library itself never "
               "locks.",
}
# Operations whose false is the answer, although their name is no question.
ANSWERS = {("IDateTime", "SetTimeZone")}
# Arguments that tell how much a caller's address holds.
LENGTHS = {"length", "size", "count"}
QUESTION = re.compile(r"(Is|Has|Contains|Equals|BelongsTo|TryLock)(?![a-z])")


# -- Reading the headers --

def clang_dump():
    compiler = shutil.which("clang++") or shutil.which("clang++-14")
    resources = subprocess.run([compiler, "-print-resource-dir"], capture_output=True, text=True,
                               check=True).stdout.strip()
    headers = [*sorted(INCLUDE.glob("Core/I*.h")), *sorted(INCLUDE.glob("Data/Structures/*.h")),
               *sorted(INCLUDE.glob("Data/Interfaces/*.h")), INCLUDE / "Data/Exports.h"]
    lines = "".join(f'#include "{header.relative_to(INCLUDE)}"\n' for header in headers)
    run = subprocess.run(
        [compiler, "--target=x86_64-pc-linux-gnu", "-std=c++20", "-ffreestanding", "-nostdinc", "-isystem",
         f"{resources}/include", "-I", INCLUDE, "-fsyntax-only", "-Xclang", "-ast-dump=json", "-x", "c++", "-"],
        input=lines, capture_output=True, text=True, check=True)
    return json.loads(run.stdout)


def declarations(node):
    """Every complete declaration of the library's namespaces and of extern "C"."""
    for child in node.get("inner", []):
        kind, name = child["kind"], child.get("name", "")
        if kind in ("NamespaceDecl", "LinkageSpecDecl"):
            yield from declarations(child)
        elif kind == "EnumDecl" or kind == "CXXRecordDecl" and child.get("completeDefinition"):
            yield name, child
        elif kind == "FunctionDecl" and name.startswith("Data_"):
            yield name, child


def comment(node, text):
    """The lines of a declaration's documentation, without their marks."""
    for child in node.get("inner", []):
        if child["kind"] == "FullComment":
            begin, last = child["range"]["begin"]["offset"], child["range"]["end"]["offset"]
            lines = text[begin:text.find("\n", last)].split("\n")
            return [re.sub(r"^\s*///<? ?", "", line).rstrip() for line in lines]
    end = node["range"]["end"]["offset"]
    trailing = re.match(r"[^\n]*///< (.*)", text[end:])  # clang attaches these to fields only
    return [trailing.group(1)] if trailing else []


class Function:
    def __init__(self, interface, node, text):
        self.interface = interface  # "" for an export
        self.name = node["name"]
        self.result = plain(node["type"]["qualType"].split("(", 1)[0])
        self.parameters = [(plain(child["type"]["qualType"]), child["name"])
                           for child in node.get("inner", []) if child["kind"] == "ParmVarDecl"]
        self.doc = comment(node, text)

    def outs(self):
        return [(kind, name) for kind, name in self.parameters if is_out(kind)]

    def is_answer(self):
        """Whether the result is what the caller asked for; otherwise it tells success."""
        if self.result != "bool":
            return self.result != "void" and (self.interface, self.name) not in WITHOUT_RESULT
        if (self.interface, self.name) in ANSWERS or QUESTION.match(self.name):
            return True
        return self.name.startswith("Get") and not self.outs()

    def c_name(self):
        if not self.interface:
            return "ld_" + snake(self.name.removeprefix("Data_"))
        return f"{c_type(self.interface)}_{snake(self.name)}"


def plain(type_name):
    return re.sub(r"\w+::", "", type_name).strip()


def is_out(kind):
    return kind.endswith("**") and kind != "IErrorCode **" or kind in ("_VARIANT *", "_UUID *")


def snake(name):
    for word, replacement in C_WORDS.items():
        name = name.replace(word, "_" + replacement + "_")
    name = re.sub(r"(?<=[a-z0-9])(?=[A-Z])", "_", name)
    name = re.sub(r"uint_(?=\d)", "uint", name)
    return re.sub(r"_+", "_", name).strip("_").lower()


def c_type(name):
    """ITable -> ld_table, ValueType -> ld_value_type, uint64_t -> uint64_t."""
    if name in C_NAMES:
        return C_NAMES[name]
    if name[0].isupper():
        return "ld_" + snake(name[1:] if re.match(r"I[A-Z]", name) else name)
    return name


def c_declarator(kind):
    """The type of a parameter or result: 'const ld_variant*'."""
    base = re.search(r"\w+(?= \*|$|\*)", kind.replace("const ", "")).group()
    const = "const " if kind.startswith("const ") else ""
    return const + c_type(base) + "*" * kind.count("*")


def constants_of(enumeration):
    value = -1
    for constant in enumeration["inner"]:
        if constant["kind"] == "EnumConstantDecl":
            value = int(constant["inner"][0]["value"]) if constant["inner"][0]["kind"] == "ConstantExpr" else value + 1
            yield constant["name"], value


class Headers:
    def __init__(self):
        self.enumerations, self.records, self.interfaces, self.exports = {}, {}, {}, []
        self.interface_docs = {}
        self.constants = {}  # enumeration -> (name, value) of each enumerator
        for name, node in declarations(clang_dump()):
            text = self.file_of(name).read_text()  # ASCII, so that offsets count characters
            if node["kind"] == "EnumDecl":
                self.enumerations[name] = (node, comment(node, text), text)
                self.constants[name] = list(constants_of(node))
            elif name.startswith("Data_"):
                self.exports.append(Function("", node, text))
            elif re.match(r"I[A-Z]", name):
                self.interface_docs[name] = comment(node, text)
                operations = [Function(name, child, text) for child in node["inner"] if child.get("virtual")]
                unique = {operation.name: operation for operation in reversed(operations)}
                self.interfaces[name] = list(reversed(unique.values()))
            else:
                self.records[name] = (node, comment(node, text), text)

    @staticmethod
    def file_of(name):
        found = [path for path in INCLUDE.glob("*/**/*.h") if path.stem == name.lstrip("_").title()
                 or path.stem == name.lstrip("_")]
        return found[0] if found else INCLUDE / "Data/Exports.h"



# -- Documentation --

class Documentation:
    """Says in C's terms what the headers say of C++."""

    def __init__(self, headers):
        self.operations = {}  # (interface, name or slot) -> name in C
        self.everywhere = {}  # name -> names in C
        for interface, operations in headers.interfaces.items():
            for operation in operations:
                name = operation.c_name()
                self.operations[interface, operation.name] = name
                self.everywhere.setdefault(operation.name, set()).add(name)
                for slot in slots_of(operation):
                    self.operations.setdefault((interface, slot), name)
        for export in headers.exports:
            self.everywhere[export.name] = {export.c_name()}
        self.types = {*headers.interfaces, *headers.enumerations, *headers.records}

    def quoted(self, interface, name):
        """The C form of a name in backquotes."""
        scope, _, last = name.rpartition("::")
        owner = scope.rpartition("::")[2] or interface
        if (owner, last) in self.operations:
            return f"`{self.operations[owner, last]}`"
        if last in self.types:
            return f"`{c_type(last)}`"
        found = self.everywhere.get(last, ())
        if len(found) == 1:
            return f"`{next(iter(found))}`"
        return f"`{snake(name)}`" if name[0].islower() else f"`{name}`"

    def text(self, interface, lines):
        text = "\n\n".join(filter(None, map(own_words, "\n".join(lines).split("\n\n"))))
        text = re.sub(r"\bSlots? \d+(, \d+)*( (and|to) \d+)?\.\s*", "", text)

        def slots(match):
            names = [self.operations.get((interface, int(slot))) for slot in re.findall(r"\d+", match.group())]
            return " and ".join(f"`{name}`" for name in names)
        text = re.sub(r"\bslots? \d+( and \d+)?", slots, text)
        text = re.sub(r"`([\w:]+)`", lambda match: self.quoted(interface, match.group(1)), text)
        text = re.sub(r"@param (\w+)", lambda match: f"@param {snake(match.group(1))}", text)
        text = re.sub(r"@(return|throws)\s+true\.?\s*(?=\n|$)", "", text)
        text = re.sub(r"\b(Never\s+throws|Guarded)\.[ \t]*", "", text)
        text = re.sub(r", guarded\b", "", text)
        text = re.sub(r"@return\s+(also )?false(?:, with `\w+` unchanged,)?(?: with| also with)?", r"@fails \1with", text)
        text = re.sub(r"@throws", "@fails with", text)
        text = re.sub(r"@fails with also", "@fails also with", text)
        text = re.sub(r"\s*\bstd::(runtime_error|out_of_range|length_error)\b\s*", " ", text)
        text = text.replace("std::bad_alloc", "code 2")
        text = re.sub(r", (all|unless\s+stated\s+otherwise)\s*:", ":", text)
        # Out-pointers have their own rule in C, and clearing a string returns nothing.
        text = re.sub(r"for a null name, column or `out`", "for a null name or column", text)
        text = re.sub(r"All but those from `ld_string_get_data`\s+and `ld_string_clear` point",
                      "All but that from `ld_string_get_data` point", text)
        text = re.sub(r"\s*\bNull\s+does\s+nothing\.", "", text)
        text = re.sub(r',?\s*(or|also with|and)?\s*"Cannot be nullptr!"\s+for\s+a\s+null\s+(destination|`out`)', "", text)
        text = re.sub(r',?\s*((or|and)\s+)?"Pointer\s+to\s+a\s+pointer[^"]*"', "", text)
        text = re.sub(r',?\s*((or|and)\s+)?"Pointer\s+of[^"]*avoid\s+memory\s+leaks!"', "", text)
        text = re.sub(r"\n?\s*@fails( with)?\s*(?=\n@|$)", "", text)
        text = re.sub(r"@fails with\s+(for|if|as|also|when)\b", r"@fails \1", text)
        text = re.sub(r"@fails with\s*(, and|,)\s*", "@fails with ", text)
        text = re.sub(r"(?<!struct )\b(?:Core|Data::\w+)::(\w+)(?=[^\"]*$)", lambda m: self.quoted(interface, m.group(1)),
                      text) if '"' not in text else text
        text = text.replace("with std::system_error ", "").replace('"code 2"', "code 2")
        return re.sub(r"[ \t]+\n", "\n", text).strip()

    def of(self, operation, previous):
        lines = OTHER_DOCS.get((operation.interface, operation.name))
        if lines:
            return self.text(operation.interface, [lines])
        if not operation.doc and previous:
            return f"See `{previous}`."
        return self.text(operation.interface, operation.doc)


def blocks(lines):
    """The lines joined into paragraphs, list items and @-entries, each with its hanging indent; "" is a gap."""
    out, item = [], False
    for line in lines:
        mark = re.match(r"\s*(- |@\w+\s+)(?:(?<=@param )(\w+\s+))?", line)
        if not line.strip():
            if out and out[-1]:  # not after an example that was left out
                out.append("")
            item = False
        elif mark:
            out.append(line.strip())
            item = True
        elif out and out[-1] and item == bool(re.match(r"\s{2,}", line)):
            out[-1] += " " + line.strip()
        elif re.match(r"\s{4,}", line):
            continue  # an example in C++
        else:
            out.append(line.strip())
            item = False
    return out


OTHER_RULES = re.compile(r"guarded|throw|^All others|`error`|carr(y|ies) no reference|caller releases|`Ptr<>`")


# Sentences that say something else of C, or refer to one that C does not have.
OTHER_SENTENCES = {
    "A lack of memory throws std::bad_alloc or makes the guarded operation fail with code 2.":
        "A lack of memory is a failure with code 2.",
    "They fail only": "The operations fail only",
    " (as the exported functions do, see Exports.h)": "",
    " If false is also a valid result, only the error object shows a failure.": "",
    "On failure they return false, 0 or null and store an error object:": "Common failures:",
}


def own_words(paragraph):
    """A paragraph on ownership or failures without what the C interface rules for all objects alike."""
    paragraph = paragraph.replace("Failures are thrown:", "Failures.")
    if not re.match(r"\s*(Ownership|Failures|Memory)[.,]", paragraph):
        return paragraph
    kept = []
    for block in blocks(paragraph.split("\n")):
        if block.startswith('- "Pointer to a pointer'):
            continue
        for sentence, other in OTHER_SENTENCES.items():
            block = block.replace(sentence, other)
        if not block.startswith("- "):
            sentences = re.split(r"(?<=[.:!])\s+(?=[A-Z])", block)
            block = " ".join(sentence for sentence in sentences if not OTHER_RULES.search(sentence))
        if block:
            kept.append(block)
    return "" if len(kept) == 1 and re.fullmatch(r"\w+\.", kept[0]) else "\n".join(kept)


def slots_of(operation):
    match = re.match(r"\s*Slots? (\d+)(?: (and|to) (\d+))?", operation.doc[0] if operation.doc else "")
    if not match:
        return []
    first = int(match.group(1))
    return range(first, int(match.group(3) or first) + 1)


def formatted(text):
    """A comment of at most 100 columns."""
    lines = []
    for block in blocks(text.split("\n")) if text else []:
        hang = re.match(r"(@param \w+\s+|@\w+ |- )?", block).end()
        first = "  " if block.startswith("- ") else ""
        lines += textwrap.wrap(block, 96, initial_indent=first, subsequent_indent=first + " " * hang,
                               break_long_words=False, break_on_hyphens=False) or [""]
    return "".join(f"/// {line}".rstrip() + "\n" for line in lines)


# -- Writing --

class Binding:
    """One function in C."""

    def __init__(self, operation, documentation, enumerations):
        self.operation = operation
        self.name = operation.c_name()
        self.documentation = documentation
        self.enumerations = enumerations
        self.reads = any(kind in ("const char *", "const char16_t *", "const void *", "const _VARIANT *")
                         for kind, _ in operation.parameters)
        self.parameters = []  # declarations in C
        self.checks, self.arguments, self.gives = [], [], []
        if operation.interface:
            self.parameters.append(f"{c_type(operation.interface)}* self")
        for kind, name in operation.parameters:
            self.add_parameter(kind, snake(name))
        self.answers = operation.is_answer()
        if self.answers:
            self.parameters.append(f"{c_declarator(operation.result)}* result")
        self.parameters.append("ld_error** error")

    def add_parameter(self, kind, name):
        if kind == "IErrorCode **":
            self.arguments.append("raised")
            return
        self.parameters.append(f"{c_declarator(kind)} {name}")
        if kind.endswith("**"):
            made = "made" if name == "out" else f"made_{name}"
            self.checks.append(f"Out<{kind[:-3].strip()}> {made}({name});")
            self.arguments.append(f"{made}.Receive()")
            self.gives.append(f"{made}.Give();")
        elif kind.startswith("I") and kind.endswith("*"):
            self.arguments.append(f"Object<{kind[:-1].strip()}>({name})")
        elif kind in ("_VARIANT *", "const _VARIANT *", "_UUID *", "const _UUID *"):
            self.arguments.append(f"Record({name})")
            if is_out(kind):
                self.checks.append(f"CheckResult({name});")
        elif kind == "const char16_t *":
            self.arguments.append(f"reinterpret_cast<const char16_t*>({name})")
        elif kind[0].isupper():
            last = f"{c_type(kind)}_{snake(self.enumerations[kind][-1][0])}".upper()
            self.arguments.append(f'Enumerator<Structures::{kind}>({name}, {last}, "{c_type(kind)}")')
        else:
            if kind == "uint64_t" and name in LENGTHS and self.reads:
                self.checks.append(f"CheckLength({name});")
            self.arguments.append(name)

    def signature(self):
        return f"bool {self.name}({', '.join(self.parameters)})"

    def call(self):
        operation, arguments = self.operation, ", ".join(self.arguments)
        other = OTHER_CALLS.get((operation.interface, operation.name))
        if other:
            return other.format(arguments=arguments)
        return f"{'target.' if operation.interface else ''}{operation.name}({arguments})"

    def body(self):
        call, result, end = self.call(), self.operation.result, "return true;"
        lines = list(self.checks)
        if self.answers:
            lines.insert(0, "CheckResult(result);")
        if self.operation.interface:
            lines.insert(0, f"auto& target = Self<{self.operation.interface}>(self);")
        # Without an error object, false means a lack of memory, unless the operation has none to give.
        tells_reason = "raised" in self.arguments or not self.operation.interface
        if self.answers:
            if "raised" in self.arguments:
                call = f"Confirmed(raised, [&] {{ return {call}; }})"
            pointer = result.startswith("I") and result.endswith("*")
            lines.append(f"GiveObject(result, {call});" if pointer else f"GiveAnswer(result, {call});")
        elif result == "bool":
            if tells_reason:
                call = f"Done({call}{', raised' if 'raised' in self.arguments else ''})"
            if self.gives:
                lines.append(f"if (!{call}) return false;")
            else:
                end = f"return {call};"
        else:
            lines.append(f"{call};")
        raised = "Core::IErrorCode** raised" if "raised" in self.arguments else "Core::IErrorCode**"
        inner = "\n".join(f"    {line}" for line in lines + self.gives + [end])
        return f"{self.signature()} {{\n  return Call(error, [&]({raised}) {{\n{inner}\n  }});\n}}\n"

    def prototype(self):
        return f"{formatted(self.documentation)}LD_API {self.signature()};\n"


def bindings(headers):
    docs = Documentation(headers)
    for interface, operations in headers.interfaces.items():
        by_hand = BY_HAND.get(interface, ())
        if by_hand is None:
            continue
        other = OTHER_INTERFACE_DOCS.get(interface)
        yield interface, formatted(other or docs.text(interface, headers.interface_docs[interface]))
        previous = None
        for operation in operations:
            text = docs.of(operation, previous)
            text = re.sub(r"@return\s+", "@param result  ", text) if operation.is_answer() else \
                re.sub(r"@return[^@]*", "", text).strip()
            if operation.doc:
                previous = operation.c_name()
            if operation.name not in by_hand:
                yield interface, Binding(operation, text, headers.constants)
    yield "", "/// -- Creating objects, reading and writing --\n"
    for export in headers.exports:
        yield "", Binding(export, docs.of(export, None), headers.constants)


def header_text(headers):
    docs, parts = Documentation(headers), []
    for name, (node, doc, text) in headers.enumerations.items():
        parts.append(formatted(docs.text("", doc)) + f"typedef {node['fixedUnderlyingType']['qualType']} {c_type(name)};")
        lines = []
        constants = [child for child in node["inner"] if child["kind"] == "EnumConstantDecl"]
        for constant, (constant_name, value) in zip(constants, headers.constants[name], strict=True):
            note = comment(constant, text)
            note = "  ///< " + docs.text("", [re.sub(r"(?<![`:\w])I[A-Z]\w+", r"`\g<0>`", each) for each in note]) \
                if note else ""
            lines.append(f"  {c_type(name).upper()}_{snake(constant_name).upper()} = {value},{note}")
        parts.append("enum {\n" + "\n".join(lines) + "\n};\n")
    for interface in headers.interfaces:
        if interface not in ("IErrorCode", "IObject"):
            parts.append(f"typedef struct {c_type(interface)} {c_type(interface)};")
    parts.append("")
    for interface, item in bindings(headers):
        parts.append(item.prototype() if isinstance(item, Binding) else f"\n// ---- {c_type(interface) if interface else 'Functions'} ----\n\n{item if interface else ''}")
    text = TEMPLATE.read_text().replace("@GENERATED@\n", "\n".join(parts))
    for name, number in re.findall(r"#define LAYERDATA_VERSION_(\w+) (\d+)", VERSION.read_text()):
        text = text.replace(f"@{name}@", number)
    return text


def source_text(headers):
    functions = "\n".join(item.body() for _, item in bindings(headers) if isinstance(item, Binding))
    return f"// Generated by Tools/generate-c.py from the public headers.\n\n{functions}"


def calls_text(generated):
    """Every function of the C headers that can fail, with the names of its arguments."""
    lines = []
    for text in [generated, *(path.read_text() for path in sorted(HEADER.parent.glob("layerdata_*.h")))]:
        text = re.sub(r"//.*", "", text)
        for name, parameters in re.findall(r"^LD_API\s+bool\s+(\w+)\(([^)]*)\)", text, re.M):
            names = [re.search(r"\w+$", parameter.strip()).group() for parameter in parameters.split(",")]
            if re.search(r"\bld_error\*\* error\s*$", parameters):
                lines.append(f"FUNCTION({', '.join([name, *(f'{chr(34)}{each}{chr(34)}' for each in names[:-1])])})")
    return "// Generated by Tools/generate-c.py from the headers of the C interface.\n" + "\n".join(lines) + "\n"


def main():
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    arguments.add_argument("--check", action="store_true")
    check = arguments.parse_args().check
    headers = Headers()
    header = header_text(headers)
    for path, text in ((HEADER, header), (SOURCE, source_text(headers)), (CALLS, calls_text(header))):
        style = text if path == CALLS else subprocess.run(
            ["clang-format", f"--assume-filename={path}.h"], input=text, capture_output=True, text=True,
            check=True).stdout
        if check and path.read_text() != style:
            sys.exit(f"{path.relative_to(ROOT)} is not what Tools/generate-c.py writes")
        if not check:
            path.write_text(style)


if __name__ == "__main__":
    main()
