#!/usr/bin/env python3
"""Makes from include/kxdialogs.h what hosts in other languages need: make_declarations.py HEADER FOLDER.

Writes kxdialogs.def (the exports with their argument bytes, for import libraries), KxDialogs.cs (C#), KxDialogs.pas
(Delphi) and layout_check.c, which holds every size and offset that the other two are built on against the header: it
compiles, for 32-bit Windows, only while they agree.
"""

import pathlib
import re
import sys

SIZES = {"char": 1, "uint8_t": 1, "int8_t": 1, "uint16_t": 2, "int16_t": 2, "uint32_t": 4, "int32_t": 4, "double": 8}
CSHARP = {"char": "byte", "uint8_t": "byte", "int8_t": "sbyte", "uint16_t": "ushort", "int16_t": "short"}
CSHARP |= {"uint32_t": "uint", "int32_t": "int", "double": "double", "void": "void"}
PASCAL = {"char": "AnsiChar", "uint8_t": "Byte", "int8_t": "ShortInt", "uint16_t": "Word", "int16_t": "SmallInt"}
PASCAL |= {"uint32_t": "LongWord", "int32_t": "LongInt", "double": "Double"}
POINTER = 4
PASCAL_WORDS = {"as", "begin", "end", "file", "in", "label", "of", "record", "set", "string", "to", "type", "unit"}
HEAD = "Declarations of kxdialogs.dll %s, made from kxdialogs.h, which says what each thing means.\n"


class Field:
    def __init__(self, kind, pointer, name, counts):
        self.kind, self.pointer, self.name, self.counts = kind, pointer, name, counts
        self.offset = 0

    def count(self):
        total = 1
        for n in self.counts:
            total *= n
        return total


class Header:
    def __init__(self, text):
        self.version = re.search(r'#define KX_VERSION_TEXT "(.*?)"', text).group(1)
        text = re.sub(r"/\*.*?\*/", "", text, flags=re.S)
        text = re.sub(r"^#.*(\\\n.*)*$", "", text, flags=re.M)
        self.constants = {}
        for body in re.findall(r"enum\s*\{(.*?)\}", text, flags=re.S):
            for name, value in re.findall(r"(\w+)\s*=\s*(-?\w+)", body):
                self.constants[name] = int(value, 0)
        self.records, self.sizes, self.aligns = {}, dict(SIZES), dict(SIZES)
        for name, body in re.findall(r"typedef struct (\w+) \{(.*?)\} \1;", text, flags=re.S):
            self.add_record(name, body)
        self.functions = []
        for result, name, arguments in re.findall(r"(\w+) KX_CALL (\w+)\((.*?)\);", text, flags=re.S):
            parts = [] if arguments.strip() == "void" else [" ".join(a.split()) for a in arguments.split(",")]
            self.functions.append((result, name, parts))

    def add_record(self, name, body):
        fields, offset, align = [], 0, 1
        for line in body.split(";"):
            match = re.match(r"\s*(\w+)\s*(\*?)\s*(\w+)((?:\[\w+\])*)\s*$", line)
            if not match:
                if line.strip():
                    sys.exit(f"make_declarations: {name}: cannot read {line.strip()!r}")
                continue
            kind, pointer, field_name, dimensions = match.groups()
            counts = [int(n) if n.isdigit() else self.constants[n] for n in re.findall(r"\[(\w+)\]", dimensions)]
            field = Field(kind, bool(pointer), field_name, counts)
            unit, unit_align = (POINTER, POINTER) if pointer else (self.sizes[kind], self.aligns[kind])
            align = max(align, unit_align)
            field.offset = -(-offset // unit_align) * unit_align
            if field.offset != offset:
                sys.exit(f"make_declarations: {name}.{field_name}: a gap before it; give the gap a field")
            offset = field.offset + unit * field.count()
            fields.append(field)
        size = -(-offset // align) * align
        if size != offset:
            sys.exit(f"make_declarations: {name}: a gap at its end; give the gap a field")
        self.records[name], self.sizes[name], self.aligns[name] = fields, size, align


def definition(header):
    rows = "".join(f"    {name}@{POINTER * len(arguments)}\n" for _, name, arguments in header.functions)
    return "; " + HEAD % header.version + "LIBRARY kxdialogs.dll\nEXPORTS\n" + rows


def layout_check(header):
    text = '#include "kxdialogs.h"\n#define KX_SAME(a, b) _Static_assert((a) == (b), #a)\n'
    for name, fields in header.records.items():
        text += f"KX_SAME(sizeof({name}), {header.sizes[name]});\n"
        text += "".join(f"KX_SAME(offsetof({name}, {f.name}), {f.offset});\n" for f in fields)
    return text


def csharp_field(header, field):
    """Plain memory without references, so that a record can be shared by address."""
    if field.pointer:
        note = f" // {field.kind}*"
        return (f"fixed uint {field.name}[{field.count()}];" if field.counts else f"uint {field.name};") + note
    if field.kind in SIZES:
        kind = CSHARP[field.kind]
        return f"fixed {kind} {field.name}[{field.count()}];" if field.counts else f"{kind} {field.name};"
    if field.counts:
        size = header.sizes[field.kind] * field.count()
        return f"fixed byte {field.name}[{size}]; // {field.count()} x {field.kind}"
    return f"{field.kind} {field.name};"


def csharp_argument(argument):
    kind, pointer, name = re.match(r"(?:const )?(\w+)\s*(\*?)\s*(\w+)$", argument).groups()
    return f"{CSHARP.get(kind, kind)}{pointer} {name}"


def csharp(header):
    text = "// " + HEAD % header.version
    text += "// For a 32-bit process, compiled with /unsafe. A pointer is a uint, a text an array of Windows-1252 bytes.\n"
    text += "using System.Runtime.InteropServices;\n\nnamespace KxDialogs\n{\n    public static unsafe class Kx\n    {\n"
    text += "".join(f"        public const int {name} = {value};\n" for name, value in header.constants.items())
    for result, name, arguments in header.functions:
        list_ = ", ".join(csharp_argument(a) for a in arguments)
        text += f'\n        [DllImport("kxdialogs.dll", CallingConvention = CallingConvention.StdCall, ExactSpelling = true)]\n'
        text += f"        public static extern {CSHARP[result]} {name}({list_});\n"
    text += "    }\n"
    for name, fields in header.records.items():
        text += f"\n    [StructLayout(LayoutKind.Sequential, Pack = 1, Size = {header.sizes[name]})]\n"
        text += f"    public unsafe struct {name}\n    {{\n"
        text += "".join(f"        public {csharp_field(header, f)}\n" for f in fields) + "    }\n"
    return text + "}\n"


def pascal_field(field):
    kind = ("Pointer" if field.kind == "void" else "P" + field.kind) if field.pointer else PASCAL.get(field.kind, field.kind)
    if field.pointer and field.kind in PASCAL:
        kind = "^" + PASCAL[field.kind]
    for count in reversed(field.counts):
        kind = f"array[0..{count - 1}] of {kind}"
    return f"    {'&' if field.name.lower() in PASCAL_WORDS else ''}{field.name}: {kind};\n"


def pascal_argument(argument):
    kind, pointer, name = re.match(r"(?:const )?(\w+)\s*(\*?)\s*(\w+)$", argument).groups()
    if pointer:
        return f"{name}: {'Pointer' if kind == 'void' else 'P' + kind}"
    return f"{name}: {PASCAL[kind]}"


def pascal(header):
    text = "{ " + HEAD % header.version + "  For a 32-bit program. Texts are Windows-1252, ended by #0. }\n"
    text += "unit KxDialogs;\n\ninterface\n\nconst\n"
    text += "".join(f"  {name} = {value};\n" for name, value in header.constants.items()) + "\ntype\n"
    for name, fields in header.records.items():
        text += f"  P{name} = ^{name};\n  {{ {header.sizes[name]} bytes }}\n  {name} = packed record\n"
        text += "".join(pascal_field(f) for f in fields) + "  end;\n\n"
    for result, name, arguments in header.functions:
        list_ = "(" + "; ".join(pascal_argument(a) for a in arguments) + ")" if arguments else ""
        head = f"procedure {name}{list_};" if result == "void" else f"function {name}{list_}: {PASCAL[result]};"
        text += head + " stdcall; external 'kxdialogs.dll';\n"
    return text + "\nimplementation\n\nend.\n"


def main(source, folder):
    header = Header(source.read_text(encoding="utf-8"))
    folder.mkdir(parents=True, exist_ok=True)
    made = {"kxdialogs.def": definition, "KxDialogs.cs": csharp, "KxDialogs.pas": pascal, "layout_check.c": layout_check}
    for name, make in made.items():
        (folder / name).write_text(make(header), encoding="ascii", newline="\r\n" if name[0] == "K" else "\n")


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))
