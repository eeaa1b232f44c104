"""Shows the objects and values of LayerData in gdb: texts, numbers, dates, the size and columns of tables.

gdb loads this file by itself when the library is installed where gdb looks; otherwise:

    (gdb) source layerdata-gdb.py

It needs no debug information of the library. An object is asked through the slots of its interface, which
are a binary contract, so the process must be alive; of a core file only addresses are shown.
"""
import datetime
import struct

import gdb
import gdb.printing

# -- Memory and slots --

MAX_TEXT = 200
MAX_COLUMNS = 20


def evaluate(expression):
    """A value of an expression in C++, whatever language the program is in."""
    language = gdb.parameter("language")
    gdb.execute("set language c++", to_string=True)
    try:
        return gdb.parse_and_eval(expression)
    finally:
        gdb.execute(f"set language {language}", to_string=True)


def read(address, size):
    return bytes(gdb.selected_inferior().read_memory(address, size))


def word(address):
    return int.from_bytes(read(address, 8), "little")


def call(address, slot, result, *arguments):
    """Calls the operation in a slot of an object. Throws gdb.error without a process."""
    operation = word(word(address) + 8 * slot)
    types = "".join(", long" for _ in arguments)
    values = "".join(f", {argument}" for argument in arguments)
    return evaluate(f"(({result} (*)(void*{types})) {operation})((void*) {address}{values})")


def address_of(pointer):
    return int(pointer.cast(gdb.lookup_type("unsigned long")))


def quoted(data):
    text = data[:MAX_TEXT].decode("utf-8", "replace")
    for character, escape in ("\\", "\\\\"), ('"', '\\"'), ("\n", "\\n"), ("\r", "\\r"), ("\t", "\\t"):
        text = text.replace(character, escape)
    return '"' + text + '"' + ("..." if len(data) > MAX_TEXT else "")


def c_string(pointer):
    """The bytes behind a `char*`, at most as many as are shown and one."""
    address, data = address_of(pointer), b""
    while address and len(data) <= MAX_TEXT:
        data += read(address + len(data), 1)
        if data.endswith(b"\0"):
            return data[:-1]
    return data


# -- Objects, by the slots of their interfaces --

def show_string(address):
    return quoted(c_string(call(address, 11, "char*")))


def show_date_time(address):
    ticks = int(call(address, 42, "long"))  # of 100 ns since 1601
    try:
        time = datetime.datetime(1601, 1, 1) + datetime.timedelta(microseconds=ticks // 10)
    except OverflowError:
        return f"{ticks} ticks"
    return time.isoformat() + "Z"


def name_of(column):
    return c_string(call(column, 6, "char*")).decode("utf-8", "replace")


def counted(count, what):
    return f"{count} {what}{'' if count == 1 else 's'}"


def show_table(address):
    rows, count = int(call(address, 19, "long")), int(call(address, 11, "long"))
    names = [name_of(address_of(call(address, 9, "void*", i))) for i in range(min(count, MAX_COLUMNS))]
    names += ["..."] * (count > MAX_COLUMNS)
    return f"table of {counted(rows, 'row')}, {counted(count, 'column')}: {', '.join(names)}"


def show_row(address):
    count = int(call(address, 17, "long"))
    cells = [show_record(address_of(call(address, 26, "void*", i))) for i in range(min(count, MAX_COLUMNS))]
    cells += ["..."] * (count > MAX_COLUMNS)
    return f"row {int(call(address, 16, 'int'))}: {', '.join(cells)}"


def show_column(address):
    return f"column {int(call(address, 10, 'int'))} {quoted(c_string(call(address, 6, 'char*')))}"


def show_json(address):
    return show_object(address_of(call(address, 7, "void*")), show_string)


def with_count(what, slot):
    return lambda address: f"{what} of {int(call(address, slot, 'long'))}"


INTERFACES = {
    "IString": show_string, "IDateTime": show_date_time, "ITable": show_table, "IRow": show_row,
    "IColumn": show_column, "IJsonDocument": show_json, "IArray": with_count("array", 12),
    "IVariantList": with_count("list", 10), "IObjectList": with_count("list", 10),
    "IVariantDictionary": with_count("dictionary", 11),
}
HANDLES = {
    "ld_string": show_string, "ld_date_time": show_date_time, "ld_table": show_table, "ld_row": show_row,
    "ld_column": show_column, "ld_json_document": show_json, "ld_array": INTERFACES["IArray"],
    "ld_variant_list": INTERFACES["IVariantList"], "ld_object_list": INTERFACES["IObjectList"],
    "ld_variant_dictionary": INTERFACES["IVariantDictionary"],
}


def show_object(address, show):
    if address == 0:
        return "null"
    try:
        return show(address)
    except (gdb.error, gdb.MemoryError):  # no process, or not yet an object
        return hex(address)


# -- Values --

TYPES = ("Unknown Invalid Null Int16 Int32 Int64 Int128 UInt16 UInt32 UInt64 UInt128 Byte SByte Double Float "
         "Bool Pointer IObject Array String DateTime JsonDocument XmlDocument Uuid ErrorCode ObjectList "
         "StringList Reserved").split()
REFERENCED = {"String": "IString", "DateTime": "IDateTime", "JsonDocument": "IJsonDocument", "Array": "IArray",
              "ObjectList": "IObjectList"}


def number_of(kind, payload):
    if kind == "Double":
        return repr(struct.unpack("<d", payload[:8])[0])
    if kind == "Float":
        return "%.9g" % struct.unpack("<f", payload[:4])[0]
    if kind == "Bool":
        return "true" if payload[0] else "false"
    size = 16 if kind.endswith("128") else 8
    return str(int.from_bytes(payload[:size], "little", signed=not kind.startswith(("U", "B"))))


def show_record(address):
    """A record of 24 bytes: a tag, whose lower half is the type and whose upper half how the value is stored,
    and at offset 8 the value."""
    tag, payload = int.from_bytes(read(address, 4), "little"), read(address + 8, 16)
    code, form, first = tag & 0xFFFF, tag >> 16, int.from_bytes(payload[:8], "little")
    if code >= len(TYPES):
        return f"invalid type {code}"
    kind = TYPES[code]
    if form == 1:
        show = INTERFACES.get(REFERENCED.get(kind), hex)
        return f"{kind} {show_object(first, show)}"
    if form == 2 or kind == "Pointer":
        return f"{kind} {hex(first)}"
    if kind == "String":
        return f"{kind} {quoted(payload.split(bytes(1))[0])}"
    if kind == "Uuid":
        return f"{kind} {payload.hex()}"
    if kind in ("Unknown", "Invalid", "Null", "Reserved"):
        return kind
    return f"{kind} {number_of(kind, payload)}"


# -- Printers --

class Shown:
    """What gdb asks for the text of a value."""

    def __init__(self, text):
        self.text = text

    def to_string(self):
        return self.text


def show_pointer(value):
    """A smart pointer to an interface."""
    name = value.type.strip_typedefs().template_argument(0).strip_typedefs().name.split("::")[-1]
    return show_object(address_of(value["object_"]), INTERFACES.get(name, hex))


def show_handle(value):
    """An owning handle of the C interface."""
    name = value.type.strip_typedefs().template_argument(0).strip_typedefs().name
    return show_object(address_of(value["object_"]), HANDLES.get(name, hex))


def member(name):
    return lambda value: show_handle(value[name])


def show_cell(value):
    row = address_of(value["row_"]["object_"])
    return show_object(row, lambda row: show_record(address_of(call(row, 26, "void*", int(value["column_"])))))


def show_text(value):
    view = value["view_"]
    data, size = address_of(view["_M_str"]), int(view["_M_len"])
    return quoted(read(data, min(size, MAX_TEXT + 1))) if size else '""'


CLASSES = {
    "ld_variant": lambda value: show_record(int(value.address)),
    "Data::Structures::_VARIANT": lambda value: show_record(int(value.address)),
    "Core::Variant": lambda value: show_record(int(value.address)),
    "layerdata::Value": lambda value: show_record(int(value["record_"].address)),
    "layerdata::Table": member("table_"),
    "layerdata::Row": member("row_"),
    "layerdata::Column": member("column_"),
    "layerdata::Cell": show_cell,
    "layerdata::Json": member("document_"),
    "layerdata::Text": show_text,
}
TEMPLATES = {"Core::Ptr": show_pointer, "Core::WeakPtr": show_pointer, "layerdata::detail::Handle": show_handle}


class Printers(gdb.printing.PrettyPrinter):
    def __call__(self, value):
        kind = value.type.strip_typedefs().unqualified()
        if kind.code == gdb.TYPE_CODE_PTR:
            show = HANDLES.get(kind.target().unqualified().name)
            return Shown(show_object(address_of(value), show)) if show else None
        name = kind.name or kind.tag or ""
        show = CLASSES.get(name) or TEMPLATES.get(name.split("<")[0])
        if show is None or (name in CLASSES and value.address is None and "layerdata::" not in name):
            return None
        return Shown(show(value))


# Also when one program loads both libraries, each of which brings this file along.
gdb.printing.register_pretty_printer(gdb.current_objfile(), Printers("layerdata"), replace=True)
