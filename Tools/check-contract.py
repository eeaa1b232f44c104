#!/usr/bin/env python3
"""Compares the public headers with the binary contract of the version in CMakeLists.txt.

    check-contract.py                    compares the headers, a case per declaration and target
    check-contract.py --library LIBRARY  compares a library built by the preset "clang"
    check-contract.py --write LIBRARY    describes the headers and the library of a new version
    check-contract.py --write-c          describes the C interface again, until it is released
    check-contract.py --seal-c           ends that, with the release
    check-contract.py --self-test        changes one thing at a time in a copy and expects the check to fail

Contract/1.0.txt holds every slot, record, enumerator and exported function of version 1.0,
Contract/1.0.abi what libabigail reads from the built library, Contract/C-1.0.txt every function, record,
type, enumerator and constant of the C interface, and Contract/SHA256SUMS the checksums: a description
never changes. (That of the C interface gets its checksum with the first release.) A version may add to an
earlier one of the same major version but must keep all of it.

clang lays the headers out for a Microsoft and for an Itanium target. Nothing is linked and no header of
either system is needed.
"""
import contextlib
import hashlib
import io
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

TARGETS = {"Microsoft": "x86_64-pc-windows-msvc", "Itanium": "x86_64-pc-linux-gnu"}
# Microsoft compilers reverse overloads. Both of these return the same address, so their order cannot matter.
OVERLOADED = {"Data::Interfaces::IArray": {"GetData"}}


class Broken(Exception):
    """The headers contain something that no contract may contain."""


class DoesNotCompile(Exception):
    """The headers do not compile."""


# -- What the headers say --

def include_lines(root):
    headers = [root / "Include/Core/IObject.h", root / "Include/Core/IErrorCode.h",
               *sorted((root / "Include/Data/Structures").glob("*.h")),
               *sorted((root / "Include/Data/Interfaces").glob("*.h")), root / "Include/Data/Exports.h"]
    return [f'#include "{header.relative_to(root / "Include")}"' for header in headers]


def clang(root, target, lines, *options, language=("-std=c++20", "-x", "c++")):
    compiler = shutil.which("clang++") or shutil.which("clang++-14")
    resources = subprocess.run([compiler, "-print-resource-dir"], capture_output=True, text=True,
                               check=True).stdout.strip()
    run = subprocess.run(
        [compiler, f"--target={target}", "-ffreestanding", "-nostdinc", "-isystem", f"{resources}/include",
         "-I", root / "Include", *language, "-", *options],
        input="\n".join(lines) + "\n", capture_output=True, text=True)
    if run.returncode != 0:
        raise DoesNotCompile("the public headers do not compile alone:\n" + run.stderr)
    return run.stdout


def declarations(node, scope=""):
    """Every (qualified name, node) of the library's namespaces and of extern "C"."""
    for child in node.get("inner", []):
        kind, name = child["kind"], f"{scope}{child.get('name', '')}"
        if kind == "NamespaceDecl" and (scope or name in ("Core", "Data")):
            yield from declarations(child, f"{name}::")
        elif kind == "LinkageSpecDecl":
            yield from declarations(child, scope)
        elif scope or name.startswith("Data_"):
            yield name, child


def plain(type_name):
    return re.sub(r"\w+::", "", type_name)


def function(node):
    """'result name(arguments)' without the arguments' names."""
    result, arguments = plain(node["type"]["qualType"]).split("(", 1)
    if "__attribute__" in arguments:
        raise Broken(f"{node['name']} has a calling convention of its own")
    return f"{result}{node['name']}({arguments}"


def enumerators(node):
    lines, value = [], -1
    for constant in node["inner"]:
        if constant["kind"] == "EnumConstantDecl":
            given = [child["value"] for child in constant.get("inner", []) if child["kind"] == "ConstantExpr"]
            value = int(given[0]) if given else value + 1
            lines.append(f"{constant['name']} = {value}")
    return lines


def enumeration(node):
    width = node.get("fixedUnderlyingType")
    if not width:
        raise Broken(f"{node['name']} has no fixed width")
    return [f"of {width['qualType']}", *enumerators(node)]


def record(name, node, layouts):
    size, alignment, offsets = layouts[name]
    fields = [child for child in node["inner"] if child["kind"] == "FieldDecl"]
    return [f"{size} bytes, aligned to {alignment}"] + [
        f"{offset} {plain(field['type']['qualType'])} {field['name']}"
        for offset, field in zip(offsets, fields, strict=True)]


def interface(name, node, tables):
    """The bases, and the interface's own operations by their slot in the compiler's table."""
    if any(child["kind"] == "FieldDecl" for child in node["inner"]):
        raise Broken(f"{name} has a field")
    bases = [base["type"].get("desugaredQualType", base["type"]["qualType"])
             for base in node.get("bases", [])]
    own = [child for child in node["inner"] if child.get("virtual")]
    table = tables[name]
    first = len(table) - len(own)
    names = [method["name"] for method in own]
    if table[first:] != names:
        raise Broken(f"{name} does not have its operations in the order of their declaration")
    for repeated in {method for method in names if names.count(method) > 1}:
        if repeated not in OVERLOADED.get(name, ()):
            raise Broken(f"{name} overloads {repeated}, which Microsoft compilers would reorder")
    return [f"derived from {', '.join(bases)}" if bases else "the root"] + [
        f"{first + i} {function(method)}" for i, method in enumerate(own)]


def layouts_in(text):
    """Maps each record to its size, its alignment and the offsets of its fields, in bytes."""
    found = {}
    for match in re.finditer(r"^Type: (?:struct |union |class )?(\S+)\n\nLayout: <ASTRecordLayout\n(.*?)>$",
                             text, re.M | re.S):
        size, alignment = (int(re.search(rf"\b{key}:(\d+)", match[2])[1]) // 8
                           for key in ("Size", "Alignment"))
        offsets = re.search(r"FieldOffsets: \[([\d, ]*)\]", match[2])[1]
        found[match[1]] = size, alignment, [int(bits) / 8 for bits in offsets.split(",") if bits.strip()]
    return {name: (size, alignment, [int(o) if o == int(o) else o for o in offsets])
            for name, (size, alignment, offsets) in found.items()}


def tables_in(text):
    """Maps each interface to the names of the operations in its table."""
    tables = {}
    # "VFTable for 'Base' in 'Interface' (n entries)." here, "Vtable for 'Interface' (n entries)." there.
    for match in re.finditer(r"^VF?[Tt]able for (.*) \(\d+ entries\)\.\n((?:.+\n)+)", text, re.M):
        entries = re.findall(r"^ *\d+ \| (.*)$", match[2], re.M)
        rtti = next(i for i, entry in enumerate(entries) if entry.endswith(" RTTI"))
        tables[re.findall(r"'([^']+)'", match[1])[-1]] = [
            re.search(r"(~?\w+)\(", entry)[1] for entry in entries[rtti + 1:]]
    return tables


def describe(root, target):
    """Maps 'kind name' to the lines that describe it, for one target."""
    headers = include_lines(root)
    syntax = json.loads(clang(root, target, headers, "-fsyntax-only", "-Xclang", "-ast-dump=json"))
    found = [(name, node) for name, node in declarations(syntax)
             if node["kind"] in ("EnumDecl", "FunctionDecl", "TypedefDecl", "TypeAliasDecl")
             or node["kind"] == "CXXRecordDecl" and node.get("completeDefinition")]
    structs = [(name, node) for name, node in found if node["kind"] == "CXXRecordDecl"]
    polymorphic = {name for name, node in structs if node["definitionData"].get("isPolymorphic")}
    # A constructor needs the tables of its bases, sizeof the layout of a record.
    probes = [f"struct Probe{i} : {name} {{ Probe{i}(); }}; Probe{i}::Probe{i}() {{}}"
              if name in polymorphic else f"unsigned long long size{i} = sizeof({name});"
              for i, (name, _) in enumerate(structs)]
    layout = clang(root, target, headers + probes, "-S", "-emit-llvm", "-o", "/dev/null", "-Xclang",
                   "-fdump-vtable-layouts", "-Xclang", "-fdump-record-layouts-simple")
    layouts, tables = layouts_in(layout), tables_in(layout)
    blocks = {}
    for name, node in found:
        if node["kind"] == "EnumDecl":
            blocks[f"enumeration {name}"] = enumeration(node)
        elif name in polymorphic:
            blocks[f"interface {name}"] = interface(name, node, tables)
        elif node["kind"] == "CXXRecordDecl":
            blocks[f"record {name}"] = record(name, node, layouts)
        elif node["kind"] == "FunctionDecl":
            if node.get("mangledName") != node["name"]:
                raise Broken(f"{name} is not extern \"C\"")
            blocks.setdefault("exports", []).append(function(node))
        else:
            raise Broken(f"{name} is an alias, which could change unseen")
    blocks["exports"].sort(key=lambda line: line.split("(")[0].split()[-1])
    return dict(sorted(blocks.items()))


OURS = re.compile(r"ld_|Arrow")
CONSTANTS = re.compile(r"#define ((?:LD|ARROW)_(?!VERSION|API\b)\w+) (\S.*)")


def describe_c(root, target):
    """The same of the C interface, of which an enumeration may have the width of int."""
    c = {"language": ("-std=c99", "-x", "c")}
    headers = ["#include <LayerData/layerdata.h>"]
    syntax = json.loads(clang(root, target, headers, "-fsyntax-only", "-Xclang", "-ast-dump=json", **c))
    found = [node for node in syntax["inner"]
             if OURS.match(node.get("name", "")) or node["kind"] == "EnumDecl"]
    records = [node for node in found if node["kind"] == "RecordDecl" and node.get("completeDefinition")]
    probes = [f"unsigned long long size{i} = sizeof(struct {node['name']});" for i, node in enumerate(records)]
    layouts = layouts_in(clang(root, target, headers + probes, "-S", "-emit-llvm", "-o", "/dev/null", "-Xclang",
                               "-fdump-record-layouts-simple", **c))
    blocks = {"constants": sorted(f"{name} {value}" for name, value in CONSTANTS.findall(
        clang(root, target, headers, "-E", "-dM", **c)))}
    previous = ""
    for node in found:
        name = node.get("name", previous)  # the enumerators of an integer type follow it
        if node["kind"] == "EnumDecl":
            blocks[f"enumeration {name}"] = enumerators(node)
        elif node["kind"] == "RecordDecl" and node in records:
            blocks[f"record {name}"] = record(name, node, layouts)
        elif node["kind"] == "TypedefDecl":
            blocks.setdefault("types", []).append(f"{name} is {node['type']['qualType']}")
        elif node["kind"] == "FunctionDecl":
            blocks.setdefault("functions", []).append(function(node))
        previous = name
    blocks["functions"].sort(key=lambda line: line.split("(")[0].split()[-1])
    blocks["types"].sort()
    return {name: lines for name, lines in sorted(blocks.items()) if lines}


# -- What the contract says --

def project_version(root):
    return tuple(int(part) for part in re.search(
        r"^project\(LayerData\s+VERSION (\d+)\.(\d+)\.(\d+)", (root / "CMakeLists.txt").read_text(),
        re.M).groups())


def read_description(path):
    blocks, current = {}, None
    for line in path.read_text().splitlines():
        if line.startswith("  "):
            current.append(line.strip())
        elif line and not line.startswith("#"):
            current = blocks.setdefault(line, [])
    return blocks


def write_description(path, blocks):
    path.write_text("\n".join(
        [f"# Generated by Tools/check-contract.py --write: the binary contract of version {path.stem}.",
         "# Programs that were built years ago rely on every line."]
        + [f"\n{name}\n  " + "\n  ".join(lines) for name, lines in blocks.items()]) + "\n")


def is_open(root, path):
    """Whether a description may still be written again: that of the C interface until its first release."""
    return path.name.startswith("C-") and path.name not in (root / "Contract/SHA256SUMS").read_text()


def checksum(path):
    return f"{hashlib.sha256(path.read_bytes()).hexdigest()}  {path.name}"


def difference(expected, found, may_grow=False):
    """The differences that are not allowed: slots and fields are fixed, other lists may grow, and so may
    records at their end that begin with their size."""
    if may_grow and set(expected) <= set(found) or expected == found:
        return []
    is_sized = expected[1:2] == ["0 uint64_t size"]
    if may_grow is None and is_sized and expected[1:] == found[1:len(expected)]:
        return []
    return [f"  contract: {line}" for line in expected if line not in found] + [
        f"  headers:  {line}" for line in found if line not in expected] or ["  another order"]


def grows(block):
    """True for a list, None for a record, which may do so in its way."""
    if block.startswith("record"):
        return None
    return block in ("exports", "functions", "types", "constants") or block.startswith("enumeration")


class Part:
    """What has a description of its own."""

    def __init__(self, prefix, case, describe):
        self.prefix, self.case, self.describe = prefix, case, describe

    def path(self, root, version):
        return root / f"Contract/{self.prefix}{version[0]}.{version[1]}.txt"


PARTS = [Part("", "", describe), Part("C-", "C.", describe_c)]


class Report:
    """Prints each case in GoogleTest's form."""
    good = True

    def case(self, name, problems):
        print(f"[ RUN      ] {name}")
        for problem in problems:
            print(problem)
        print(f"[  FAILED  ] {name} (0 ms)" if problems else f"[       OK ] {name} (0 ms)")
        self.good &= not problems


def check(root, targets=tuple(TARGETS)):
    report = Report()
    version = project_version(root)
    sums = (root / "Contract/SHA256SUMS").read_text().splitlines()
    files = sorted(path for path in (root / "Contract").iterdir()
                   if path.name != "SHA256SUMS" and not is_open(root, path))
    report.case("Contract.DescriptionsNeverChange",
                difference(sorted(sums), sorted(checksum(path) for path in files)))
    macros = dict(re.findall(r"^#define LAYERDATA_VERSION_(\w+) (\d+)$",
                             (root / "Include/Data/Version.h").read_text(), re.M))
    report.case("Contract.VersionHeader", [] if macros == dict(zip(("MAJOR", "MINOR", "PATCH"), map(
        str, version))) else [f"  Version.h says {macros}, CMakeLists.txt {version}"])

    for part in PARTS:
        check_part(root, part, version, targets, report)
    return report.good


def check_part(root, part, version, targets, report):
    current = part.path(root, version)
    if not current.exists():
        report.case(f"Contract.{part.case}IsDescribed", [f"  {current.name} is missing; add it with --write"])
        return
    contract = read_description(current)
    for earlier in (root / "Contract").glob(f"{part.prefix}{version[0]}.*.txt"):
        if earlier != current:
            report.case(f"Contract.{current.stem}Keeps{earlier.stem}", [
                problem for name, lines in read_description(earlier).items()
                for problem in difference(lines, contract.get(name, []), grows(name))])
    for compiler in targets:
        try:
            found = part.describe(root, TARGETS[compiler])
        except Broken as reason:
            report.case(f"Contract.{part.case}{compiler}", [f"  {reason}"])
            continue
        for name in sorted(contract.keys() | found.keys()):
            report.case(f"Contract.{part.case}{compiler}.{name.split(' ')[-1]}",
                        difference(contract.get(name, []), found.get(name, [])))


# -- What the binary says --

def write_abi(root, library, path):
    subprocess.run(["abidw", "--headers-dir", root / "Include", "--drop-private-types", "--no-corpus-path",
                    "--no-show-locs", "--no-comp-dir-path", "--no-elf-needed", "--no-parameter-names",
                    "--exported-interfaces-only", "--no-write-default-sizes", "--out-file", path, library],
                   check=True)
    start, rest = path.read_text().split("\n", 1)  # abidiff recognises the file by its first line
    path.write_text(f"{start}\n  <!-- Generated by Tools/check-contract.py -->\n{rest}")


def abi_difference(contract, found):
    """What abidiff prints about a difference, and whether there is one (rather than an error)."""
    run = subprocess.run(["abidiff", contract, found], capture_output=True, text=True)
    return [run.stdout + run.stderr] if run.returncode else [], run.returncode & 7 == 4


def check_library(root, library):
    report = Report()
    contract = root / "Contract/{}.{}.abi".format(*project_version(root))
    with tempfile.TemporaryDirectory() as folder:
        found = pathlib.Path(folder) / "found.abi"
        write_abi(root, library, found)
        report.case("Contract.Library", abi_difference(contract, found)[0])
        # Check that the comparison notices a moved slot, in a copy of the contract.
        moved = contract.read_text().replace("vtable-offset='7'", "vtable-offset='8'", 1)
        found.write_text(moved)
        report.case("ContractGate.SlotMovedInTheLibrary",
                    [] if abi_difference(contract, found)[1] else ["  is not stopped"])
    return report.good


def write(root, library=None):
    version = project_version(root)
    paths = [part.path(root, version) for part in PARTS]
    abi, sums = paths[0].with_suffix(".abi"), root / "Contract/SHA256SUMS"
    if paths[0].exists() or sums.exists() and paths[0].name in sums.read_text():
        sys.exit(f"{paths[0].name} exists and never changes: raise the version in CMakeLists.txt, the "
                 "minor one for an addition, the major one for a change.")
    for part, path in zip(PARTS, paths, strict=True):
        write_description(path, part.describe(root, TARGETS["Itanium"]))
    if library:
        write_abi(root, library, abi)
    return seal(root, [paths[0], abi, paths[1]])


def seal(root, paths):
    with (root / "Contract/SHA256SUMS").open("a") as file:
        file.writelines(f"{checksum(path)}\n" for path in paths if path.exists())
    return True


def seal_c(root):
    return seal(root, [path for path in (root / "Contract").iterdir() if is_open(root, path)])


def write_c(root):
    path = PARTS[1].path(root, project_version(root))
    if not is_open(root, path):
        sys.exit(f"{path.name} never changes: raise the version in CMakeLists.txt.")
    write_description(path, describe_c(root, TARGETS["Itanium"]))
    return True


# -- The self-test --

def replace(old, new):
    def edit(text):
        if not re.search(old, text, re.S):
            sys.exit(f"--self-test: nothing to change: {old}")
        return re.sub(old, new, text, count=1, flags=re.S)
    return edit


SWAPPED_SLOTS = ("Include/Data/Interfaces/IVariantList.h",
                 replace(r"(  virtual bool IsEmpty\(\) = 0;)(.*?)(  virtual void Clear\(\) = 0;)", r"\3\2\1"))
RAISE_MINOR = ("CMakeLists.txt", replace(r"VERSION (\d+)\.\d+\.\d+", r"VERSION \1.99.0"))
RAISE_MAJOR = ("CMakeLists.txt", replace(r"VERSION \d+\.\d+\.\d+", "VERSION 99.0.0"))
NEW_EXPORT = ("Include/Data/Exports.h", replace(r'extern "C" \{', r'\g<0>\nbool Data_New(int32_t);'))

C_HEADER, C_READING = (f"Include/LayerData/layerdata{part}.h" for part in ("", "_reading"))
LONGER_OPTIONS = (C_READING, replace(r"\} ld_csv_read_options;", r"uint64_t last; \g<0>"))
NEW_C_FUNCTION = (C_HEADER, replace(r"LD_API uint32_t ld_version\(void\);", r"\g<0>\nLD_API void ld_new(void);"))

# name, whether the check must fail, edits, whether the description is written again
CHANGES = [
    ("SlotsSwapped", True, [SWAPPED_SLOTS], False),
    ("SlotAdded", True, [("Include/Data/Interfaces/IHashing.h",
                          replace(r" protected:", "  virtual void New() = 0;\n protected:"))], False),
    ("ArgumentRetyped", True, [("Include/Data/Interfaces/IVariantList.h",
                                replace(r"GetAt\(uint64_t", "GetAt(int64_t"))], False),
    ("FieldsSwapped", True, [("Include/Data/Structures/Uuid.h",
                              replace(r"data2;(.*?uint16_t) data3;", r"data3;\1 data2;"))], False),
    ("FieldRetyped", True, [("Include/Data/Structures/Variant.h",
                             replace(r"uint32_t type;", "int32_t type;"))], False),
    ("EnumeratorsSwapped", True, [("Include/Data/Structures/MergeMode.h",
                                   replace(r"AllLeft = 1(.*)All = 2", r"AllLeft = 2\1All = 1"))], False),
    ("EnumerationNarrowed", True, [("Include/Data/Structures/ValueType.h",
                                    replace(r"ValueType : uint32_t", "ValueType : uint8_t"))], False),
    ("ExportRetyped", True, [("Include/Data/Exports.h",
                              replace(r"FromPosixTime\(int64_t", "FromPosixTime(int32_t"))], False),
    ("DescriptionEditedToo", True, [SWAPPED_SLOTS, (
        "Contract/{version}.txt", replace(r"8 bool IsEmpty\(\)\n  9 void Clear\(\)(?=\n  10 uint64_t GetCount\(\)\n\n"
                                          r"interface Data::Interfaces::IVariantPairList)",
                                          "8 void Clear()\n  9 bool IsEmpty()"))], False),
    ("ChangeInAMinorVersion", True, [SWAPPED_SLOTS, RAISE_MINOR], True),
    ("ChangeInAMajorVersion", False, [SWAPPED_SLOTS, RAISE_MAJOR], True),
    ("AdditionWithoutAVersion", True, [NEW_EXPORT], False),
    ("AdditionInAMinorVersion", False, [NEW_EXPORT, RAISE_MINOR], True),
    ("CFunctionRetyped", True, [(C_HEADER, replace(r"(ld_table_get_row\(ld_table\* self, )int64_t", r"\1int32_t"))],
     False),
    ("CFunctionRemoved", True, [(C_HEADER, replace(r"LD_API uint32_t ld_version\(void\);", ""))], False),
    ("CFieldsSwapped", True, [(C_HEADER, replace(r"data2;(.*?uint16_t) data3;", r"data3;\1 data2;"))], False),
    ("CFieldRetyped", True, [(C_HEADER, replace(r"uint32_t type;", "int32_t type;"))], False),
    ("CEnumeratorsSwapped", True, [(C_HEADER, replace(r"(_ALL_LEFT = )1(.*_ALL = )2", r"\g<1>2\g<2>1"))], False),
    ("CEnumerationNarrowed", True, [(C_HEADER, replace(r"uint32_t ld_value_type;", "uint8_t ld_value_type;"))], False),
    ("CCallbackRetyped", True, [(C_HEADER, replace(r"uint64_t total\);", "int64_t total);"))], False),
    ("COptionsGrowWithoutAVersion", True, [LONGER_OPTIONS], False),
    ("COptionsGrowAtTheEnd", False, [LONGER_OPTIONS, RAISE_MINOR], True),
    ("COptionsGrowInFront", True, [(C_READING, replace(r"  const char\* separator;", r"  uint64_t zeroth;\n\g<0>")),
                                   RAISE_MINOR], True),
    ("CAdditionWithoutAVersion", True, [NEW_C_FUNCTION], False),
    ("CAdditionInAMinorVersion", False, [NEW_C_FUNCTION, RAISE_MINOR], True),
    ("CChangeInAMinorVersion", True, [(C_HEADER, replace(r"int32_t\* result", "int64_t* result")), RAISE_MINOR], True),
    ("ArgumentRenamed", False, [("Include/Data/Exports.h",
                                 replace(r"FromPosixTime\(int64_t seconds", "FromPosixTime(int64_t s"))], False),
]


def noticed(root, edits, rewritten):
    """Whether the check fails for a copy with these edits, and its output."""
    with tempfile.TemporaryDirectory() as folder, contextlib.redirect_stdout(io.StringIO()) as output:
        copy = pathlib.Path(folder)
        for name in ("Include", "Contract"):
            shutil.copytree(root / name, copy / name)
        shutil.copy(root / "CMakeLists.txt", copy)
        name_of = "{}.{}".format(*project_version(root)[:2])
        for name, edit in edits:
            path = copy / name.format(version=name_of)
            path.write_text(edit(path.read_text()))
        if rewritten:
            write(copy)
            version = dict(zip(("MAJOR", "MINOR", "PATCH"), project_version(copy)))
            header = copy / "Include/Data/Version.h"
            header.write_text(re.sub(r"(#define LAYERDATA_VERSION_(\w+)) \d+",
                                     lambda m: f"{m[1]} {version[m[2]]}", header.read_text()))
        stopped = not check(copy, targets=("Itanium",))
    return stopped, output.getvalue()


def self_test(root):
    report = Report()
    for name, expected, edits, rewritten in CHANGES:
        stopped, output = noticed(root, edits, rewritten)
        report.case(f"ContractGate.{name}", [] if stopped == expected else
                    [f"  {'passes' if expected else 'is stopped'}:", output])
    return report.good


def main():
    root = pathlib.Path(__file__).resolve().parent.parent
    modes = {"--headers": check, "--library": check_library, "--write": write, "--write-c": write_c,
             "--seal-c": seal_c, "--self-test": self_test}
    mode, *arguments = sys.argv[1:] or ["--headers"]
    try:
        return 0 if modes[mode](root, *arguments) else 1
    except DoesNotCompile as reason:
        sys.exit(f"[  FAILED  ] Contract (0 ms)\n{reason}")


if __name__ == "__main__":
    sys.exit(main())
