#!/usr/bin/python3
"""Whether our own declarations of the macOS frameworks say nothing that the system does not have.

Every function, class, protocol, method, property, structure, enumeration and constant that a folder
of headers declares is looked up in typings that were generated from the system's own metadata. What
those do not have stands in a list, with a reason."""

import argparse
import collections
import ctypes
import difflib
import fcntl
import os
import pathlib
import re
import shutil
import struct
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
PACKAGE = "@nativescript/macos-node-api"
FLAGS = ["-x", "objective-c++", "-std=c++20", "-fobjc-arc", "-fblocks",
         "-fobjc-runtime=macosx-13.0"]

# The typings leave out what the names of an enumeration's constants have in common. That is the
# name of the enumeration itself, or else one of these beginnings and ends.
AFFIXES = {
    "CFStringBuiltInEncodings": [("kCFStringEncoding", "")],
    "CGEventField": [("kCG", "")],
    "CGEventFlags": [("kCGEventFlagMask", "")],
    "CGEventSourceStateID": [("kCGEventSourceState", "State")],
    "CGEventTapLocation": [("kCG", "EventTap")],
    "CGEventTapPlacement": [("kCG", "EventTap")],
    "CGEventType": [("kCGEvent", "")],
    "CGWindowListOption": [("kCGWindowList", "")],
    "NSApplicationActivationOptions": [("NSApplicationActivate", "")],
    "NSAutoresizingMaskOptions": [("NSView", "")],
    "NSCellImagePosition": [("NS", "")],
    "NSComparisonResult": [("NSOrdered", "")],
    "NSImageScaling": [("NS", "")],
    "NSRectEdge": [("NS", "")],
    "NSSearchPathDirectory": [("NS", "Directory")],
    "NSSearchPathDomainMask": [("NS", "Mask")],
    "NSStringCompareOptions": [("NS", "Search")],
    "NSURLRequestCachePolicy": [("NSURLRequest", "")],
    "NSURLSessionResponseDisposition": [("NSURLSessionResponse", "")],
    "qos_class_t": [("QOS_CLASS_", "")],
}


class Failure(Exception):
    """Why nothing could be checked at all."""


# --- Kinds of types -----------------------------------------------------------------------------

class Kind:
    """What can be told of a type on both sides. `word` is one of: void, number, boolean, string,
    object, opaque, pointer, struct, function, anything."""

    def __init__(self, word, name=None, result=None, parameters=()):
        self.word, self.name, self.result, self.parameters = word, name, result, list(parameters)

    def __str__(self):
        if self.word == "function":
            return f"({', '.join(map(str, self.parameters))}) => {self.result}"
        return f"{self.word} {self.name}" if self.name else self.word


def bare(name):
    """The name of a structure, whether that of its tag or of its type."""
    return name.lstrip("_")


class Match:
    """Compares a kind of ours with one of the typings."""

    def __init__(self, typings):
        self.typings = typings

    def fits(self, ours, theirs):
        if "anything" in (ours.word, theirs.word):
            return True
        return getattr(self, "_" + theirs.word)(ours, theirs)

    def _void(self, ours, _):
        return ours.word == "void"

    def _boolean(self, ours, _):
        return ours.word == "boolean"

    def _number(self, ours, theirs):
        if ours.word != "number":
            return False
        if theirs.name:  # an enumeration
            return ours.name == theirs.name or not self.typings.enumeration(ours.name)
        return not self.typings.enumeration(ours.name)

    def _string(self, ours, _):
        return ours.word == "string" or (ours.word == "object" and ours.name in
                                         ("NSString", "NSMutableString"))

    def _object(self, ours, theirs):
        if ours.word == "opaque":
            return theirs.name is None or self.typings.is_object(theirs.name)
        if ours.word != "object":
            return False
        return None in (ours.name, theirs.name) or ours.name == theirs.name

    def _pointer(self, ours, _):
        return ours.word in ("pointer", "opaque", "function") or (
            ours.word == "string" or (ours.word == "object" and ours.name == "Protocol"))

    def _struct(self, ours, theirs):
        return ours.word == "struct" and bare(ours.name) == bare(theirs.name)

    def _function(self, ours, theirs):
        if ours.word == "opaque" or ours.word == "pointer" and not theirs.parameters:
            return True
        return (ours.word == "function" and len(ours.parameters) == len(theirs.parameters)
                and self._within(ours.result, theirs.result)
                and all(map(self._within, ours.parameters, theirs.parameters)))

    def _within(self, ours, theirs):
        """Inside the type of a callback, the typings call the system's own references pointers."""
        if theirs.word == "pointer" and ours.word == "object":
            return True
        return self.fits(ours, theirs)


# --- The typings --------------------------------------------------------------------------------

class Member:
    def __init__(self, text, static, readonly, kind, parameters):
        self.text, self.static, self.readonly = text, static, readonly
        self.kind, self.parameters = kind, parameters  # parameters: None for a property


DECLARATION = re.compile(r"^(?:export )?declare (class|interface|function|const) ([\w$]+)")
MEMBER = re.compile(r"^  (static )?(?:(readonly|get|set) )?([\w$]+)\??(<.*?>)?"
                    r"(\(.*\))?(?:: (.*?))?;$")


def split_top(text, separator):
    """Splits at separators that stand in no brackets."""
    parts, depth, start = [], 0, 0
    for index, letter in enumerate(text):
        if letter in "([{<":
            depth += 1
        elif letter in ")]}" or letter == ">" and text[index - 1] != "=":
            depth -= 1
        elif letter == separator and depth == 0:
            parts.append(text[start:index].strip())
            start = index + 1
    last = text[start:].strip()
    return parts + [last] if last else parts


class Typings:
    """The declarations of a folder of .d.ts files, taken apart when asked for."""

    def __init__(self, folder):
        self._blocks = collections.defaultdict(list)  # name -> [(keyword, lines)]
        self._members = {}
        files = sorted(pathlib.Path(folder).glob("*.d.ts"))
        if not files:
            raise Failure(f"{folder} has no typings")
        for file in files:
            self._read(file)
        self._by_keyword = collections.defaultdict(list)
        for name, blocks in self._blocks.items():
            for keyword in {keyword for keyword, _ in blocks}:
                self._by_keyword[keyword].append(name)

    def _read(self, file):
        lines = None
        for line in file.read_text(encoding="utf-8").splitlines():
            if line.startswith(("declare ", "export declare ")):
                found = DECLARATION.match(line)
                lines = [line] if found else None
                if found:
                    self._blocks[found[2]].append((found[1], lines))
            elif line.startswith("}"):
                lines = None
            elif lines is not None and line.strip():
                lines.append(line)

    def _of(self, name, *keywords):
        return [lines for keyword, lines in self._blocks.get(name, ()) if keyword in keywords]

    def nearest(self, name, *keywords):
        """' Did you mean …?', where the typings have something of a similar name."""
        names = [candidate for keyword in keywords for candidate in self._by_keyword[keyword]
                 if abs(len(candidate) - len(name)) < 8 and candidate[:2] == name[:2]]
        return did_you_mean(name, names)

    def holders(self, name):
        """Which enumerations have a constant whose shortened name ends such a name."""
        start = name.removeprefix("k")[:4]
        found = [f"{enumeration}.{member}" for enumeration in self._by_keyword["const"]
                 if enumeration.startswith(start)
                 for member in self.enumeration(enumeration) or () if name.endswith(member)]
        return f" Should it be in a named enumeration, as {' or '.join(found)}?" if found else ""

    # Types.

    def is_struct(self, name):
        return any(f"  constructor(init?: {name}" in line for lines in self._of(name, "class")
                   for line in lines[:2])

    def is_object(self, name):
        return bool(self._of(name, "class", "interface")) and not self.is_struct(name)

    def kind(self, text):
        text = re.sub(r"/\*.*?\*/", "", text or "void").strip()
        alternatives = [part for part in split_top(text, "|") if part not in ("null", "undefined")]
        text = alternatives[0] if alternatives else "void"
        if found := re.match(r"^interop\.Enum<typeof ([\w$]+)>$", text):
            return Kind("number", found[1])
        if text.startswith("("):
            end = len(split_top(text, "=")[0])
            inside = text[1:text[:end].rindex(")")]
            return Kind("function", result=self.kind(text[text.index("=>", end) + 2:]),
                        parameters=self._parameters(inside))
        name = text.split("<")[0]
        words = {"number": "number", "bigint": "number", "boolean": "boolean", "string": "string",
                 "void": "void", "interop.Object": "object", "interop.Pointer": "pointer",
                 "interop.PointerConvertible": "pointer", "this": "object",
                 "InstanceType": "object", "NativeObject": "object"}
        if name in words:
            return Kind(words[name])
        if self.is_struct(name):
            return Kind("struct", name)
        if self.is_object(name):
            return Kind("object", name.removesuffix("Protocol") if name == "NSObjectProtocol"
                        else name)
        return Kind("anything")

    def _parameters(self, text):
        kinds = []
        for part in split_top(text, ","):
            name, _, of_type = part.partition(":")
            if name.strip() != "this":
                kinds.append(self.kind(of_type.strip()))
        return kinds

    # Lookups; each gives None, or nothing, for a name that is not there.

    def functions(self, name):
        """The (kind, text) of each of that name: the kernel may have another one."""
        for lines in self._of(name, "function"):
            text = lines[0].removeprefix("declare function ").rstrip(";")
            end = close_of(text, text.index("("))
            of_type = text[end + 1:].removeprefix(":").strip()
            parameters = self._parameters(text[text.index("(") + 1:end])
            yield Kind("function", result=self.kind(of_type), parameters=parameters), text

    def constant(self, name):
        """Its (kind, text)."""
        for lines in self._of(name, "const"):
            if not lines[0].endswith("{"):
                text = lines[0].split(": ", 1)[1].rstrip(";")
                return self.kind(text), text
        return None

    def enumeration(self, name):
        """Its constants, {shortened name: value}."""
        for lines in self._of(name, "const"):
            if lines[0].endswith("{"):
                pairs = (line.strip().rstrip(",").rpartition(": ") for line in lines[1:])
                return {key.strip('"'): int(value.rstrip("n")) for key, _, value in pairs}
        return None

    def fields(self, name):
        """The (name, kind) of each field of a structure."""
        for candidate in (name, "_" + name, bare(name)):
            if self.is_struct(candidate):
                found = [MEMBER.match(line) for lines in self._of(candidate, "class")
                         for line in lines[1:]]
                return [(member[3], self.kind(member[6])) for member in found
                        if member and member[3] != "constructor"]
        return None

    def has_class(self, name):
        return bool(self._of(name, "class")) and not self.is_struct(name)

    def protocol_name(self, name):
        """The name of a protocol here: one that is also a class's is longer."""
        for candidate in (name + "Protocol", name):
            if self._of(candidate, "interface"):
                return candidate
        return None

    def parents(self, name):
        """Superclass and protocols."""
        found = []
        for lines in self._of(name, "class", "interface"):
            for words in re.findall(r"(?:extends|implements) (.*?)(?= implements | \{)", lines[0]):
                found += [part.split("<")[0] for part in split_top(words, ",")]
        return [parent for parent in found if parent != name]

    def ancestors(self, name):
        """The name itself and all that it is derived from, the nearest first."""
        seen = [name]
        for candidate in seen:
            seen += [parent for parent in self.parents(candidate) if parent not in seen]
        return seen

    def own_members(self, name):
        if name not in self._members:
            members = self._members[name] = collections.defaultdict(list)
            for lines in self._of(name, "class", "interface"):
                for line in lines[1:]:
                    if (found := MEMBER.match(line)) and found[3] != "constructor":
                        self._add_member(members, line.strip(), found)
        return self._members[name]

    def _add_member(self, members, text, found):
        static, access, name, _, parameters, of_type = found.groups()
        if access == "set":
            return
        if parameters is not None and access != "get":
            member = Member(text, bool(static), True, self.kind(of_type),
                            self._parameters(parameters[1:-1]))
        else:
            readonly = access == "readonly"
            member = Member(text, bool(static), readonly, self.kind(of_type), None)
        members[name].append(member)

    def members(self, owner, name):
        """The members of that name, of the owner and its ancestors."""
        return [member for ancestor in self.ancestors(owner)
                for member in self.own_members(ancestor).get(name, ())]

    def member_names(self, owner):
        return [name for ancestor in self.ancestors(owner) for name in self.own_members(ancestor)]


class Values:
    """The values of constants that stand by themselves, from the metadata that the typings were
    made of. It has all names, each ended by a zero, then the constants: where their name starts, a
    kind, and for numbers eight bytes."""

    HEAD = struct.Struct("<4sH8I")  # mark, version, then where each of the parts starts
    FORMATS = {1: "<q", 2: "<d"}

    def __init__(self, file):
        content = pathlib.Path(file).read_bytes()
        start = content.find(b"NSMD\1\0")
        if start < 0:
            raise Failure(f"{file} has no metadata of a known version")
        content = content[start:]
        _, _, constants, end, *_ = self.HEAD.unpack_from(content)
        self._names = b"\0" + content[self.HEAD.size:constants]
        self._constants = content[constants:end]

    def find(self, name):
        """None for a constant that is not there, or no number."""
        start = self._names.find(b"\0" + name.encode() + b"\0")
        if start < 0:
            return None
        record = struct.pack("<I", start)
        at = self._constants.find(record)
        while at >= 0:
            code, value, rest = (self._constants[at + 4:at + 5], self._constants[at + 5:at + 13],
                                 self._constants[at + 13:at + 17])
            # The same bytes may stand inside another record; there no name follows.
            if code and code[0] in self.FORMATS and len(value) == 8 and self._is_name(rest):
                return struct.unpack(self.FORMATS[code[0]], value)[0]
            at = self._constants.find(record, at + 1)
        return None

    def _is_name(self, record):
        """Whether bytes tell where a name starts, or are the end of all."""
        if len(record) < 4:
            return not record
        place = struct.unpack("<I", record)[0]
        return place < len(self._names) and self._names[place] == 0


def close_of(text, opening):
    """The index of the bracket that closes the one at the index."""
    depth = 0
    for index in range(opening, len(text)):
        depth += (text[index] == "(") - (text[index] == ")")
        if depth == 0:
            return index
    raise ValueError(text)


def did_you_mean(name, names):
    lower = {candidate.lower(): candidate for candidate in names}
    near = difflib.get_close_matches(name.lower(), lower, 1, 0.75)
    return f" Did you mean '{lower[near[0]]}'?" if near else ""


# --- Our headers --------------------------------------------------------------------------------

Declared = collections.namedtuple("Declared", "key place check")


class Headers:
    """What the headers of a folder declare, read by the compiler with the flags of our sources."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder).resolve()
        names = sorted(str(file.relative_to(self.folder)) for file in self.folder.rglob("*.h"))
        if not names:
            raise Failure(f"{folder} has no headers")
        try:
            from clang import cindex
        except ImportError as error:
            raise Failure(f"{error} (script/bootstrap macos)") from error
        self.cindex = cindex
        self.kinds = cindex.CursorKind
        text = "".join(f"#include <{name}>\n" for name in names)
        self.unit = cindex.Index.create().parse(
            "declarations.mm", FLAGS + ["-isystem", str(self.folder)], [("declarations.mm", text)],
            cindex.TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD)
        errors = [str(each) for each in self.unit.diagnostics
                  if each.severity >= cindex.Diagnostic.Error]
        if errors:
            raise Failure("the headers do not compile:\n  " + "\n  ".join(errors))

    def cursors(self):
        """The declarations of these headers at the top level."""
        yield from self._inside(self.unit.cursor)

    def _inside(self, parent):
        kinds = self.kinds
        for cursor in parent.get_children():
            if not self._is_ours(cursor):
                continue
            if cursor.kind in (kinds.LINKAGE_SPEC, kinds.UNEXPOSED_DECL):
                yield from self._inside(cursor)
            else:
                yield cursor

    def _is_ours(self, cursor):
        file = cursor.location.file
        return file is not None and self.folder in pathlib.Path(file.name).resolve().parents

    def place(self, cursor):
        file = pathlib.Path(cursor.location.file.name).resolve()
        return f"{os.path.relpath(file)}:{cursor.location.line}"

    def header(self, cursor):
        return str(pathlib.Path(cursor.location.file.name).resolve().relative_to(self.folder))

    # What the Python side of the library has no method for.

    def _library(self, name, result):
        function = getattr(self.cindex.conf.lib, name)
        function.restype = result
        return function

    def is_function_like(self, macro):
        return bool(self._library("clang_Cursor_isMacroFunctionLike", ctypes.c_uint)(macro))

    def attributes(self, declared):
        """Those of a property, as bits."""
        function = self._library("clang_Cursor_getObjCPropertyAttributes", ctypes.c_uint)
        return function(declared, ctypes.c_uint(0))

    def getter(self, declared):
        function = self._library("clang_Cursor_getObjCPropertyGetterName", self.cindex._CXString)
        function.errcheck = self.cindex._CXString.from_result
        return function(declared)

    def value(self, variable):
        """The number that a variable is set to in the header, or None."""
        library = self.cindex.conf.lib
        evaluate = self._library("clang_Cursor_Evaluate", ctypes.c_void_p)
        result = ctypes.c_void_p(evaluate(variable))
        if not result:
            return None
        kind = library.clang_EvalResult_getKind(result)
        function, of_type = {1: ("clang_EvalResult_getAsLongLong", ctypes.c_longlong),
                             2: ("clang_EvalResult_getAsDouble", ctypes.c_double),
                             }.get(kind, (None, None))
        number = self._library(function, of_type)(result) if function else None
        library.clang_EvalResult_dispose(result)
        return number

    # Types.

    def kind(self, of_type):
        types = self.cindex.TypeKind
        name = self._type_name(of_type)
        canonical = of_type.get_canonical()
        if name == "BOOL" or canonical.kind == types.BOOL:
            return Kind("boolean")
        if canonical.kind == types.VOID:
            return Kind("void")
        if canonical.kind == types.ENUM:
            return Kind("number", name or bare(canonical.get_declaration().spelling))
        if canonical.kind == types.RECORD:
            return Kind("struct", canonical.get_declaration().spelling or name)
        if canonical.kind in (types.OBJCID, types.OBJCCLASS):
            return Kind("object")
        if canonical.kind == types.OBJCSEL:
            return Kind("string", "SEL")
        if canonical.kind == types.OBJCOBJECTPOINTER:
            return self._object(canonical)
        if canonical.kind == types.BLOCKPOINTER:
            return self._function(canonical.get_pointee())
        if canonical.kind == types.POINTER:
            return self._pointer(canonical, name)
        if canonical.kind in (types.CONSTANTARRAY, types.INCOMPLETEARRAY, types.LVALUEREFERENCE):
            return Kind("pointer")
        return Kind("number", name)

    def _type_name(self, of_type):
        return of_type.get_declaration().spelling or None

    def _object(self, canonical):
        words = re.match(r"^(?:__kindof |const )*(\w+)", canonical.get_pointee().spelling)
        name = words[1] if words else None
        return Kind("object", None if name in ("id", "Class") else name)

    def _function(self, of_type):
        types = self.cindex.TypeKind
        canonical = of_type.get_canonical()
        if canonical.kind != types.FUNCTIONPROTO:
            return Kind("pointer")
        return Kind("function", result=self.kind(of_type.get_result()),
                    parameters=[self.kind(each) for each in of_type.argument_types()])

    def _pointer(self, canonical, name):
        types = self.cindex.TypeKind
        pointee = canonical.get_pointee().get_canonical()
        if pointee.kind == types.OBJCSEL or canonical.spelling in ("SEL",):
            return Kind("string", "SEL")
        if pointee.kind == types.FUNCTIONPROTO:
            return self._function(pointee)
        if pointee.kind in (types.CHAR_S, types.SCHAR):
            return Kind("string", "char")
        if pointee.kind == types.RECORD:
            complete = pointee.get_declaration().get_definition() is not None
            return Kind("pointer" if complete else "opaque")
        if pointee.kind == types.VOID:
            return Kind("opaque" if name else "pointer")
        return Kind("pointer")


# --- The check ----------------------------------------------------------------------------------

READONLY, CLASS = 0x01, 0x1000  # attributes of a property


def script_name(selector):
    """The name that the typings give to a method of that selector."""
    first, *others = [part for part in selector.split(":")]
    return first + "".join(part[:1].upper() + part[1:] for part in others)


def same_value(ours, theirs):
    """Signed or not, and of whatever width."""
    return ours == theirs or ((ours < 0) != (theirs < 0)
                              and ((ours - theirs) % 2**64 == 0 or (ours - theirs) % 2**32 == 0))


def shown(value):
    """A number, and the four letters that it is made of, if it is."""
    letters = value.to_bytes(4, "big") if isinstance(value, int) and 0 < value < 2**32 else b""
    if letters and all(0x20 <= letter < 0x7f for letter in letters):
        return f"{value} ('{letters.decode()}')"
    return str(value)


class Checker:
    def __init__(self, headers, typings, values):
        self.headers, self.typings, self.values = headers, typings, values
        self.match = Match(typings)
        self.declared = {}   # key -> place, of all that is declared
        self.findings = []   # (key, place, message)
        self.within = {}     # key -> the keys that a listed name covers it by
        self.counts = collections.Counter()
        self._typedefs = {}  # place -> name, to find the name of an enumeration without one

    def run(self):
        kinds = self.headers.kinds
        checks = {
            kinds.FUNCTION_DECL: self._function,
            kinds.VAR_DECL: self._variable,
            kinds.ENUM_DECL: self._enumeration,
            kinds.STRUCT_DECL: self._struct,
            kinds.TYPEDEF_DECL: self._typedef,
            kinds.OBJC_INTERFACE_DECL: self._class,
            kinds.OBJC_CATEGORY_DECL: self._category,
            kinds.OBJC_PROTOCOL_DECL: self._protocol,
            kinds.MACRO_DEFINITION: self._macro,
        }
        for cursor in self.headers.cursors():
            if cursor.kind in checks:
                checks[cursor.kind](cursor)
        return self

    def _declare(self, key, cursor, *owners):
        """Notes a declaration. False for one that was noted before."""
        if key in self.declared:
            return False
        self.declared[key] = self.headers.place(cursor)
        self.within[key] = {key, *owners, "header " + self.headers.header(cursor)}
        return True

    def _say(self, key, message):
        self.findings.append((key, self.declared[key], message))

    def _compare(self, key, what, ours, theirs, text):
        if not self.match.fits(ours, theirs):
            self._say(key, f"{what} is {ours} here; the system has: {text}")

    def _compare_parameters(self, key, ours, theirs, text):
        if len(ours) != len(theirs):
            self._say(key, f"takes {len(ours)} parameters here, {len(theirs)} in the system: "
                           + text)
            return
        for number, (mine, other) in enumerate(zip(ours, theirs), 1):
            self._compare(key, f"parameter {number}", mine, other, text)

    # Functions and variables.

    def _function(self, cursor):
        key = cursor.spelling
        if not self._declare(key, cursor):
            return
        self.counts["functions"] += 1
        found = list(self.typings.functions(key))
        if not found:
            self._say(key, "the system has no such function."
                      + self.typings.nearest(key, "function"))
            return
        ours = [self.headers.kind(each.type) for each in cursor.get_arguments()]
        result = self.headers.kind(cursor.result_type)
        self._any_fits(found, lambda one: self._signature(key, ours, result, *one))

    def _signature(self, key, ours, result, theirs, text):
        self._compare_parameters(key, ours, theirs.parameters, text)
        self._compare(key, "the result", result, theirs.result, text)

    def _variable(self, cursor):
        key = cursor.spelling
        if self._declare(key, cursor):
            self.counts["constants"] += 1
            self._constant(key, self.headers.kind(cursor.type), self.headers.value(cursor))

    def _constant(self, key, ours, value):
        """One that stands by itself. The typings have its type, and the metadata its value."""
        found = self.typings.constant(key)
        if not found:
            self._say(key, "the system has no such constant." + self.typings.nearest(key, "const")
                      + self.typings.holders(key))
            return
        theirs, text = found
        if ours.word == "number" and theirs.word == "number":
            self._value(key, value)
        elif not (theirs.word == "pointer" and ours.word == "object"):
            self._compare(key, "it", ours, theirs, text)

    def _value(self, key, value):
        if value is None:
            return  # it is set in the library
        theirs = self.values.find(key)
        if theirs is None:
            self._say(key, f"is {shown(value)} here; the metadata does not tell its value")
        elif not same_value(value, theirs):
            self._say(key, f"is {shown(value)} here; the system has {shown(theirs)}")

    def _macro(self, cursor):
        key = cursor.spelling
        tokens = [token.spelling for token in cursor.get_tokens()]
        if (self.headers.is_function_like(cursor) or len(tokens) < 2
                or not re.match(r"k[A-Z]|[A-Z]{2,}[a-z]", key) or not self._declare(key, cursor)):
            return
        self.counts["macros"] += 1
        if not self.typings.constant(key):
            self._say(key, "a macro; the typings have no such constant."
                      + self.typings.nearest(key, "const"))
        elif len(tokens) == 2 and re.fullmatch(r"\d+|0[xX][0-9a-fA-F]+", tokens[1]):
            self._value(key, int(tokens[1], 0))

    # Enumerations and structures.

    def _typedef(self, cursor):
        self._typedefs[self.headers.place(cursor)] = cursor.spelling

    def _enumeration(self, cursor):
        kinds = self.headers.kinds
        constants = [each for each in cursor.get_children()
                     if each.kind == kinds.ENUM_CONSTANT_DECL]
        if not constants:
            return
        anonymous = not cursor.spelling or "unnamed" in cursor.spelling
        name = self._typedefs.get(self.headers.place(cursor)) if anonymous else cursor.spelling
        if name:
            self._named_enumeration(bare(name), cursor, constants)
            return
        for constant in constants:
            if self._declare(constant.spelling, constant):
                self.counts["constants"] += 1
                self._constant(constant.spelling, Kind("number"), constant.enum_value)

    def _named_enumeration(self, name, cursor, constants):
        key = "enum " + name
        members = self.typings.enumeration(name)
        if self._declare(key, cursor):
            self.counts["enumerations"] += 1
            if members is None:
                self._say(key, "the system has no such enumeration."
                          + self.typings.nearest(name, "const"))
        for constant in constants:
            self._declare(constant.spelling, constant, key)
        if members is None:
            return
        self.counts["constants"] += len(constants)
        affixes = AFFIXES.get(name) or [self._affixes(name, constants, members)]
        for constant in constants:
            self._member_constant(name, constant, members, affixes)

    def _affixes(self, name, constants, members):
        """The beginning and end that the constants' names have around the shortened ones, where
        both together are the name of the enumeration."""
        votes = collections.Counter()
        for constant in constants:
            for member in members:
                start = constant.spelling.rfind(member)
                if start >= 0:
                    around = (constant.spelling[:start], constant.spelling[start + len(member):])
                    if "".join(around).removeprefix("k") in (name, name.removesuffix("s")):
                        votes[around] += 1
        return votes.most_common(1)[0][0] if votes else (name.removesuffix("s"), "")

    def _member_constant(self, name, constant, members, affixes):
        key = constant.spelling
        for member, value in members.items():
            if key in (begin + member + end for begin, end in affixes):
                if not same_value(constant.enum_value, value):
                    self._say(key, f"is {constant.enum_value} here; the system has {value} "
                                   f"({name}.{member})")
                return
        if (found := self.typings.constant(key)) and found[0].name == name:
            self._value(key, constant.enum_value)  # an older name
            return
        names = [begin + member + end for begin, end in affixes for member in members]
        hint = did_you_mean(key, names)
        if not hint:
            hint = (f" Its constants there are {', '.join(members)}, taken to be called "
                    + " or ".join(f"'{begin}…{end}'" for begin, end in affixes)
                    + " (AFFIXES in the script says so where the enumeration's name does not).")
        self._say(key, f"{name} has no such constant.{hint}")

    def _struct(self, cursor):
        kinds = self.headers.kinds
        fields = [each for each in cursor.get_children() if each.kind == kinds.FIELD_DECL]
        name = cursor.spelling or self._typedefs.get(self.headers.place(cursor))
        if not cursor.is_definition() or not fields or not name:
            return
        key = "struct " + name
        if not self._declare(key, cursor):
            return
        self.counts["structures"] += 1
        theirs = self.typings.fields(name)
        if theirs is None:
            self._say(key, "the system has no such structure."
                      + self.typings.nearest(name, "class"))
            return
        text = "{ " + "; ".join(f"{each}: {kind}" for each, kind in theirs) + " }"
        if [each.spelling for each in fields] != [each for each, _ in theirs]:
            self._say(key, f"has the fields {', '.join(each.spelling for each in fields)} here; "
                           f"the system has {text}")
            return
        for field, (_, kind) in zip(fields, theirs):
            self._compare(key, f"the field {field.spelling}", self.headers.kind(field.type), kind,
                          text)

    # Classes and protocols.

    def _class(self, cursor):
        name = cursor.spelling
        key = "class " + name
        self._declare(key, cursor)
        self.counts["classes"] += 1
        if not self.typings.has_class(name):
            self._say(key, "the system has no such class." + self.typings.nearest(name, "class"))
        else:
            self._parents(key, name, cursor)
        self._members(name, name, key, cursor)

    def _category(self, cursor):
        kinds = self.headers.kinds
        owner = next(each.spelling for each in cursor.get_children()
                     if each.kind == kinds.OBJC_CLASS_REF)
        self._members(owner, owner, "class " + owner, cursor)

    def _protocol(self, cursor):
        name = cursor.spelling
        key = "protocol " + name
        if not cursor.is_definition() or not self._declare(key, cursor):
            return
        self.counts["protocols"] += 1
        theirs = self.typings.protocol_name(name)
        if theirs is None:
            self._say(key, "the system has no such protocol."
                      + self.typings.nearest(name, "interface"))
        self._members(name, theirs, key, cursor)

    def _parents(self, key, name, cursor):
        kinds = self.headers.kinds
        theirs = self.typings.ancestors(name)
        for each in cursor.get_children():
            if each.kind == kinds.OBJC_SUPER_CLASS_REF and each.spelling not in theirs:
                self._say(key, f"is a {each.spelling} here; the system has "
                               f"{' : '.join(theirs[:4])}")
            if each.kind == kinds.OBJC_PROTOCOL_REF:
                conformance = f"{name} <{each.spelling}>"
                self._declare(conformance, each, key)
                if each.spelling not in theirs and each.spelling + "Protocol" not in theirs:
                    self._say(conformance, f"{name} does not conform to it in the system")

    def _members(self, owner, theirs, owner_key, cursor):
        kinds = self.headers.kinds
        children = list(cursor.get_children())
        properties = [each for each in children if each.kind == kinds.OBJC_PROPERTY_DECL]
        generated = {(each.location.line, each.location.column) for each in properties}
        for each in properties:
            self._property(owner, theirs, owner_key, each)
        for each in children:
            if (each.kind in (kinds.OBJC_INSTANCE_METHOD_DECL, kinds.OBJC_CLASS_METHOD_DECL)
                    and (each.location.line, each.location.column) not in generated):
                self._method(owner, theirs, owner_key, each)

    def _known(self, theirs):
        return theirs is not None and (self.typings.has_class(theirs)
                                       or self.typings.protocol_name(theirs))

    def _method(self, owner, theirs, owner_key, cursor):
        selector = cursor.spelling
        static = cursor.kind == self.headers.kinds.OBJC_CLASS_METHOD_DECL
        key = f"{'+' if static else '-'}[{owner} {selector}]"
        if not self._declare(key, cursor, owner_key) or not self._known(theirs):
            return
        self.counts["methods"] += 1
        name = script_name(selector)
        members = self.typings.members(theirs, name)
        right = [each for each in members if each.static == static]
        if not right:
            self._no_method(key, theirs, name, members, static)
            return
        ours = [self.headers.kind(each.type) for each in cursor.get_arguments()]
        result = self.headers.kind(cursor.result_type)
        self._any_fits(right, lambda member: self._signature(
            key, ours, result, Kind("function", None, member.kind, member.parameters or []),
            member.text))
        if not ours and right[0].parameters is None:
            self._unlike_getter(key, theirs, name)

    def _no_method(self, key, theirs, name, members, static):
        if members:
            is_one = "a class method" if members[0].static else "an instance method"
            self._say(key, f"is {'a class' if static else 'an instance'} method here; in the "
                           f"system it is {is_one}: {members[0].text}")
            return
        self._say(key, f"{theirs} has no such method (which would be '{name}')."
                  + did_you_mean(name, self.typings.member_names(theirs)))

    def _any_fits(self, candidates, compare):
        """Says what is wrong by the first, unless another of that name is as declared."""
        before = len(self.findings)
        said = []
        for candidate in candidates:
            compare(candidate)
            if len(self.findings) == before:
                return
            said.append(self.findings[before:])
            del self.findings[before:]
        self.findings += said[0]

    def _unlike_getter(self, key, theirs, name):
        """The getter of a property need not have its name."""
        getter = "is" + name[:1].upper() + name[1:]
        if any(each.parameters == [] for each in self.typings.members(theirs, getter)):
            self._say(key, f"the property's getter is called '{getter}' in the system")

    def _property(self, owner, theirs, owner_key, cursor):
        name = cursor.spelling
        key = f"{owner}.{name}"
        if not self._declare(key, cursor, owner_key) or not self._known(theirs):
            return
        self.counts["properties"] += 1
        attributes = self.headers.attributes(cursor)
        static = bool(attributes & CLASS)
        members = self.typings.members(theirs, name)
        right = [each for each in members if each.static == static]
        if not right and members:
            self._say(key, f"is {'a class' if static else 'an instance'} property here; the system "
                           f"has: {members[0].text}")
            return
        if not right:
            self._say(key, f"{theirs} has no such property."
                      + did_you_mean(name, self.typings.member_names(theirs)))
            return
        ours = self.headers.kind(cursor.type)
        self._any_fits(right, lambda member: self._accessors(
            key, theirs, member, ours, bool(attributes & READONLY)))
        self._getter(key, theirs, name, self.headers.getter(cursor))

    def _accessors(self, key, theirs, member, ours, readonly):
        self._compare(key, "it", ours, member.kind, member.text)
        if member.parameters:
            self._say(key, f"is a property here; in the system it is a method: {member.text}")
        elif member.readonly and not readonly:
            setter = "set" + key.split(".")[1][:1].upper() + key.split(".")[1][1:]
            if not self.typings.members(theirs, setter):
                self._say(key, f"can be set here; the system has: {member.text}")

    def _getter(self, key, theirs, name, getter):
        if getter == name:
            self._unlike_getter(key, theirs, name)
        elif not self.typings.members(theirs, getter):
            self._say(key, f"its getter is called '{getter}' here; {theirs} has none of that name."
                      + did_you_mean(getter, self.typings.member_names(theirs)))


# --- What the typings do not have ---------------------------------------------------------------

class Absent:
    """The names that the typings do not have: a reason that ends in a colon, and below it,
    indented, the names it holds for."""

    def __init__(self, file):
        self.file = file
        self.lines = {}  # name -> number of its line
        if not file:
            return
        reason = None
        for number, line in enumerate(pathlib.Path(file).read_text("utf-8").splitlines(), 1):
            if not line.strip() or line.startswith("#"):
                continue
            if not line[0].isspace():
                reason = line.strip()
                if not reason.endswith(":"):
                    raise Failure(f"{file}:{number}: a reason ends with a colon")
            elif reason is None:
                raise Failure(f"{file}:{number}: '{line.strip()}' has no reason above it")
            else:
                self.lines[line.strip()] = number

    def sift(self, checker):
        """The findings that are not listed, and what is wrong with the list."""
        left, used = [], set()
        for key, place, message in checker.findings:
            listed = checker.within[key] & self.lines.keys()
            used |= listed
            if not listed:
                left.append(f"{place}: error: {key}: {message}")
        declared = set().union(*checker.within.values()) if checker.within else set()
        for name, number in self.lines.items():
            if name not in declared:
                left.append(f"{os.path.relpath(self.file)}:{number}: error: {name}: is listed, but "
                            "no longer declared; take it off the list")
            elif name not in used:
                left.append(f"{os.path.relpath(self.file)}:{number}: error: {name}: is listed, but "
                            "the typings have it, and as declared; take it off the list")
        return left


# --- Getting the typings ------------------------------------------------------------------------

def fetch(place, lock_folder=HERE / "typings"):
    """The package of the typings, in `place`, where it is put unless it is there already."""
    place = pathlib.Path(place)
    place.mkdir(parents=True, exist_ok=True)
    package = place / "node_modules" / PACKAGE
    with open(place / "lock", "w", encoding="utf-8") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        wanted = (lock_folder / "package-lock.json").read_bytes()
        stamp = place / "fetched.json"
        if stamp.exists() and stamp.read_bytes() == wanted and (package / "types").is_dir():
            return package
        npm = shutil.which("npm")
        if not npm:
            raise Failure("could not get the typings: npm is missing (script/bootstrap macos)")
        for name in ("package.json", "package-lock.json"):
            shutil.copyfile(lock_folder / name, place / name)
        stamp.unlink(missing_ok=True)
        result = subprocess.run(
            [npm, "ci", "--ignore-scripts", "--no-audit", "--no-fund"],
            cwd=place, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
            text=True, check=False)
        if result.returncode != 0 or not (package / "types").is_dir():
            raise Failure(f"could not get the typings ({PACKAGE}); npm said:\n{result.stdout}")
        stamp.write_bytes(wanted)
    return package


def metadata_of(package):
    """The library in the package, which carries the metadata."""
    found = sorted((package / "build").glob("**/Versions/*/NativeScript"))
    if not found:
        raise Failure(f"{package} has no library with metadata")
    return found[0]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--declarations", default=HERE / "declarations", type=pathlib.Path)
    parser.add_argument("--absent", default=HERE / "not_in_typings.txt", type=pathlib.Path,
                        help="the list of names that the typings do not have")
    where = parser.add_mutually_exclusive_group(required=True)
    where.add_argument("--fetch-to", help="folder to put the typings in, if they are not there yet")
    where.add_argument("--package", type=pathlib.Path, help="folder of the package of the typings")
    options = parser.parse_args()
    try:
        package = options.package or fetch(options.fetch_to)
        checker = Checker(Headers(options.declarations), Typings(package / "types"),
                          Values(metadata_of(package))).run()
        wrong = Absent(options.absent).sift(checker)
    except (Failure, OSError) as failure:
        print(f"check_declarations: {failure}", file=sys.stderr)
        return 2
    for line in wrong:
        print(line)
    counted = ", ".join(f"{number} {what}" for what, number in sorted(checker.counts.items()))
    print(f"check_declarations: {len(wrong)} wrong; looked up {counted}")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
