#!/usr/bin/python3
"""The check of our declarations, on small headers and typings made up for it."""

import os
import pathlib
import stat
import struct
import subprocess
import sys
import tempfile
import unittest

import check_declarations as check

SCRIPT = pathlib.Path(check.__file__).resolve()

TYPINGS = """/// <reference types="@nativescript/objc-node-api" />

declare const ABTitleKey: string;

declare const kABDefaultSize: number;

declare const kABName: interop.Pointer;

declare const ABStyle: {
  Plain: 0,
  Round: 4,
};

declare const ABColor: {
  Red: 1,
  Blue: 2,
};

declare function ABDraw(widget: interop.Object, style: interop.Enum<typeof ABStyle>, at: ABPoint): boolean;

declare function ABWatch(callback: (p1: interop.PointerConvertible, p2: number) => void, context: interop.PointerConvertible): number;

declare class ABPoint {
  constructor(init?: ABPoint);
  x: number;
  y: number;
}

declare class NSString extends NSObject {
}

declare class NSObject extends NativeObject {
  static alloc<This extends abstract new (...args: any) => any>(this: This): InstanceType<This>;

  init(): this;
}

declare class ABWidget extends NSObject implements ABDrawing {
  static widgetNamed(name: string): ABWidget;

  static readonly sharedWidget: ABWidget;

  title: string;

  readonly color: interop.Enum<typeof ABColor>;

  hidden: boolean;

  isHidden(): boolean;

  initWithTitleSizeAction(title: string, size: number, selector: string | null): this;

  runHandler(handler: (p1: ABWidget) => ABWidget | null): void;

  get parts(): NSObject;
  set parts(value: NSObject);
}

declare interface ABDrawing {
  drawInRect?(rect: ABPoint): void;
}

declare class ABButton extends ABWidget {
}
"""

PREAMBLE = """#pragma once
#define NS_ENUM(type, name) enum name : type name; enum name : type
#define NS_OPTIONS(type, name) type name; enum : type
typedef bool BOOL;
typedef long NSInteger;
typedef unsigned long NSUInteger;
@interface NSObject
+ (instancetype)alloc;
- (instancetype)init;
@end
@interface NSString : NSObject
@end
typedef NS_ENUM(NSInteger, ABStyle) { ABStylePlain = 0, ABStyleRound = 4 };
typedef struct ABPoint { double x; double y; } ABPoint;
"""

RIGHT = """
typedef NS_OPTIONS(NSUInteger, ABColor) { ABColorRed = 1, ABColorBlue = 1 << 1 };
@class ABWidget;
typedef struct ABContext* ABContextRef;
typedef const struct __ABText* ABTextRef;
extern "C" NSString* const ABTitleKey;
extern "C" const ABTextRef kABName;
enum { kABDefaultSize = 12 };
extern "C" bool ABDraw(id widget, ABStyle style, ABPoint at);
extern "C" int ABWatch(void (*callback)(ABContextRef, int), void* context);
@protocol ABDrawing
@optional
- (void)drawInRect:(ABPoint)rect;
@end
@interface ABWidget : NSObject <ABDrawing>
+ (ABWidget*)widgetNamed:(NSString*)name;
@property(class, readonly) ABWidget* sharedWidget;
@property(copy) NSString* title;
@property(readonly) ABColor color;
@property(getter=isHidden) BOOL hidden;
@property(retain) NSObject* parts;
- (instancetype)initWithTitle:(NSString*)title size:(NSInteger)size action:(SEL)selector;
- (void)runHandler:(ABWidget* (^)(ABWidget*))handler;
@end
@interface ABButton : ABWidget
@end
"""


def metadata(constants):
    """Made-up metadata with the values of constants, inside other bytes."""
    names, records = b"", b""
    for name, value in constants.items():
        records += struct.pack("<I", len(names))
        names += name.encode() + b"\0"
        records += struct.pack("<Bd", 2, value) if isinstance(value, float) else struct.pack(
            "<Bq", 1, value)
    start = check.Values.HEAD.size + len(names)
    return b"before" + check.Values.HEAD.pack(
        b"NSMD", 1, start, *[start + len(records)] * 7) + names + records


VALUES = {"kABDefault": 3, "kABDefaultSize": 12, "kABLetters": 0x6F757470, "kABAll": -1,
          "kABHalf": 0.5}


class Folder(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = pathlib.Path(temporary.name)

    def write(self, name, text):
        file = self.folder / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(text if isinstance(text, bytes) else text.encode())
        return file


class CheckTest(Folder):
    def wrong(self, declarations, absent="", typings=TYPINGS):
        """What is said of a header."""
        self.write("typings/AB.d.ts", typings)
        self.write("headers/AB/AB.h", PREAMBLE + declarations)
        checker = check.Checker(
            check.Headers(self.folder / "headers"), check.Typings(self.folder / "typings"),
            check.Values(self.write("library", metadata(VALUES)))).run()
        return check.Absent(self.write("absent.txt", absent)).sift(checker)

    def one_wrong(self, declarations, *parts, **others):
        """Expects just one complaint, which has all these parts."""
        wrong = self.wrong(declarations, **others)
        self.assertEqual(len(wrong), 1, "\n".join(wrong))
        for part in parts:
            self.assertIn(part, wrong[0])

    def test_right_declarations_pass(self):
        self.assertEqual(self.wrong(RIGHT), [])

    def test_a_complaint_names_file_and_line(self):
        line = PREAMBLE.count("\n") + 2
        self.one_wrong('\nextern "C" void ABNothing();',
                       f"headers/AB/AB.h:{line}: error: ABNothing")

    # Functions and constants.

    def test_missing_function(self):
        self.one_wrong('extern "C" bool ABDrawn(id widget, ABStyle style, ABPoint at);',
                       "no such function", "Did you mean 'ABDraw'?")

    def test_number_of_parameters(self):
        self.one_wrong('extern "C" bool ABDraw(id widget, ABStyle style);',
                       "2 parameters here, 3 in the system", "at: ABPoint")

    def test_type_of_a_parameter(self):
        self.one_wrong('extern "C" bool ABDraw(id widget, ABStyle style, double at);',
                       "parameter 3 is number here", "at: ABPoint")

    def test_another_enumeration_as_parameter(self):
        self.one_wrong('typedef NS_ENUM(NSInteger, ABColor) { ABColorRed = 1 };'
                       'extern "C" bool ABDraw(id widget, ABColor style, ABPoint at);',
                       "parameter 2 is number ABColor here", "Enum<typeof ABStyle>")

    def test_boolean_is_no_number(self):
        self.one_wrong('extern "C" unsigned char ABDraw(id widget, ABStyle style, ABPoint at);',
                       "the result is number here", "boolean")

    def test_parameters_of_a_callback(self):
        self.one_wrong('extern "C" int ABWatch(void (*callback)(void*), void* context);',
                       "parameter 1 is (pointer) => void here")

    def test_missing_constant(self):
        self.one_wrong('extern "C" NSString* const ABTitleKye;', "no such constant",
                       "Did you mean 'ABTitleKey'?")

    def test_type_of_a_constant(self):
        self.one_wrong('extern "C" const int ABTitleKey;', "it is number here", "string")

    def constants(self, declarations, *parts):
        typings = TYPINGS + "".join(f"declare const {name}: number;\n"
                                    for name in ("kABLetters", "kABAll", "kABHalf", "kABOther"))
        if parts:
            self.one_wrong(declarations, *parts, typings=typings)
        else:
            self.assertEqual(self.wrong(declarations, typings=typings), [])

    def test_values_of_constants_outside_of_enumerations(self):
        self.constants("enum : unsigned { kABLetters = 'outp', kABAll = 0xffffffff };"
                       "static const int kABDefaultSize = 12; constexpr double kABHalf = 0.5;")
        self.constants("enum { kABLetters = 'oupt' };", "is 1869967476 ('oupt') here",
                       "the system has 1869968496 ('outp')")
        self.constants("static const int kABDefaultSize = 13;", "is 13 here; the system has 12")
        self.constants("constexpr double kABHalf = 0.25;", "is 0.25 here; the system has 0.5")

    def test_constant_without_a_known_value(self):
        self.constants("enum { kABOther = 1 };", "kABOther", "does not tell its value")

    def test_constant_that_only_a_library_sets(self):
        self.constants('extern "C" const int kABOther;')

    def test_name_that_another_constant_has_as_its_value(self):
        place = len("kABDecoy\0kABNext\0")
        decoy, = struct.unpack("<q", struct.pack("<IB", place, 1) + bytes(3))
        values = check.Values(self.write("library", metadata(
            {"kABDecoy": decoy, "kABNext": 5, "kABWanted": 7, "kABLast": 8})))
        self.assertEqual([values.find(name) for name in ("kABDecoy", "kABWanted", "kABLast")],
                         [decoy, 7, 8])
        self.assertIsNone(values.find("kABWante"))

    def test_metadata_of_another_version(self):
        with self.assertRaisesRegex(check.Failure, "no metadata of a known version"):
            check.Values(self.write("library", b"NSMD\2\0"))

    def test_a_function_of_the_kernel_with_the_same_name(self):
        self.assertEqual(self.wrong(
            'extern "C" int ABRename(int a);',
            typings="declare function ABRename(p1: string, p2: string): number;\n"
                    "declare function ABRename(p1: number): number;\n" + TYPINGS), [])

    # Enumerations and structures.

    def test_wrong_value(self):
        self.one_wrong("typedef NS_ENUM(NSInteger, ABColor) { ABColorRed = 1, ABColorBlue = 3 };",
                       "ABColorBlue: is 3 here; the system has 2 (ABColor.Blue)")

    def test_wrong_value_in_options_without_a_tag(self):
        self.one_wrong("typedef NS_OPTIONS(NSUInteger, ABColor) { ABColorRed = 2 };",
                       "ABColorRed: is 2 here; the system has 1")

    def test_all_bits_set_are_minus_one(self):
        typings = TYPINGS.replace("Blue: 2", "Every: -1")
        self.assertEqual(self.wrong(
            "typedef NS_OPTIONS(unsigned, ABColor) { ABColorEvery = 0xffffffff };",
            typings=typings), [])

    def test_missing_constant_of_an_enumeration(self):
        self.one_wrong("typedef NS_ENUM(NSInteger, ABColor) { ABColorRed = 1, ABColorBule = 2 };",
                       "ABColorBule: ABColor has no such constant", "Did you mean 'ABColorBlue'?")

    def test_wrong_beginning_of_all_constants(self):
        wrong = self.wrong("typedef NS_ENUM(NSInteger, ABColor) { ABTintRed = 1, ABTintBlue = 2 };")
        self.assertEqual(len(wrong), 2)
        self.assertIn("'ABColor…'", wrong[0])

    def test_named_affixes(self):
        check.AFFIXES["ABColor"] = [("kAB", "Paint")]
        self.addCleanup(check.AFFIXES.pop, "ABColor")
        self.one_wrong("typedef NS_ENUM(NSInteger, ABColor) { kABRedPaint = 1, ABColorBlue = 2 };",
                       "ABColorBlue", "no such constant")

    def test_missing_enumeration(self):
        self.one_wrong("typedef NS_ENUM(NSInteger, ABColour) { ABColourRed = 1 };",
                       "no such enumeration", "Did you mean 'ABColor'?")

    def test_constant_outside_of_its_enumeration(self):
        self.one_wrong("enum { ABColorBlue = 2 };", "no such constant", "ABColor.Blue")

    def test_fields_of_a_structure(self):
        typings = TYPINGS.replace("  x: number;\n  y: number;", "  y: number;\n  x: number;")
        self.one_wrong("", "struct ABPoint: has the fields x, y here", "{ y: number; x: number }",
                       typings=typings)

    # Classes.

    def widget(self, member, *parts):
        self.one_wrong(f"@interface ABWidget : NSObject\n{member}\n@end", *parts)

    def test_missing_class(self):
        self.one_wrong("@interface ABWigdet : NSObject\n@end", "no such class",
                       "Did you mean 'ABWidget'?")

    def test_superclass(self):
        self.one_wrong("@interface ABWidget : NSString\n@end", "is a NSString here",
                       "ABWidget : NSObject")

    def test_protocol_that_the_class_does_not_conform_to(self):
        self.one_wrong("@protocol ABDrawing\n@end\n@interface ABPlain : NSObject <ABDrawing>\n@end",
                       "ABPlain <ABDrawing>: ABPlain does not conform to it",
                       typings=TYPINGS + "declare class ABPlain extends NSObject {\n}\n")

    def test_missing_protocol(self):
        self.one_wrong("@protocol ABDarwing\n@end", "no such protocol", "Did you mean 'ABDrawing'?")

    def test_method_of_a_protocol(self):
        self.one_wrong("@protocol ABDrawing\n- (void)drawInFrame:(ABPoint)rect;\n@end",
                       "ABDrawing has no such method", "Did you mean 'drawInRect'?")

    def test_wrong_selector(self):
        self.widget("- (instancetype)initWithTitle:(NSString*)t size:(NSInteger)s acton:(SEL)a;",
                    "-[ABWidget initWithTitle:size:acton:]", "no such method",
                    "Did you mean 'initWithTitleSizeAction'?")

    def test_selector_with_a_colon_too_few(self):
        self.widget("- (instancetype)initWithTitleSize:(NSString*)t action:(SEL)a;",
                    "2 parameters here, 3 in the system")

    def test_class_method_as_instance_method(self):
        self.widget("- (ABWidget*)widgetNamed:(NSString*)name;", "an instance method here",
                    "it is a class method")

    def test_instance_method_as_class_method(self):
        self.widget("+ (void)runHandler:(ABWidget* (^)(ABWidget*))handler;", "a class method here",
                    "it is an instance method")

    def test_object_where_a_number_belongs(self):
        self.widget("- (instancetype)initWithTitle:(NSString*)t size:(id)s action:(SEL)a;",
                    "parameter 2 is object here", "size: number")

    def test_another_class(self):
        self.widget("- (void)runHandler:(ABWidget* (^)(NSString*))handler;",
                    "parameter 1 is (object NSString) => object ABWidget here")
        self.widget("+ (NSString*)widgetNamed:(NSString*)name;", "the result is object NSString")
        self.widget("+ (ABWidget*)widgetNamed:(ABWidget*)name;", "parameter 1 is object ABWidget",
                    "name: string")

    def test_result_of_a_method(self):
        self.widget("+ (BOOL)widgetNamed:(NSString*)name;", "the result is boolean here")

    def test_block(self):
        self.widget("- (void)runHandler:(void (^)(ABWidget*))handler;",
                    "parameter 1 is (object ABWidget) => void here")

    def test_inherited_method(self):
        self.assertEqual(self.wrong(
            RIGHT + "@interface ABButton ()\n- (void)runHandler:(ABWidget* (^)(ABWidget*))handler;"
            "\n@end"), [])

    def test_category(self):
        self.one_wrong(RIGHT + "@interface ABWidget (More)\n- (void)more;\n@end",
                       "-[ABWidget more]", "no such method")

    # Properties.

    def test_missing_property(self):
        self.widget("@property NSString* titel;", "ABWidget.titel", "no such property",
                    "Did you mean 'title'?")

    def test_type_of_a_property(self):
        self.widget("@property NSInteger title;", "it is number NSInteger here", "title: string")

    def test_property_that_cannot_be_set(self):
        self.widget("@property NSInteger color;", "can be set here", "readonly color")

    def test_property_of_the_class(self):
        self.widget("@property(readonly) ABWidget* sharedWidget;", "an instance property here",
                    "static readonly sharedWidget")

    def test_getter_of_another_name(self):
        self.widget("@property BOOL hidden;", "getter is called 'isHidden'")

    def test_method_that_calls_the_property(self):
        self.widget("- (BOOL)hidden;", "getter is called 'isHidden'")

    def test_missing_getter(self):
        self.widget("@property(getter=isHiden) BOOL hidden;", "its getter is called 'isHiden' here",
                    "Did you mean 'isHidden'?")

    # Macros.

    def test_macro(self):
        self.one_wrong("#define kABNothing 1", "kABNothing: a macro")
        self.assertEqual(self.wrong(
            "#define kABDefaultSize 12\n#define AB_EXPORT extern\n#define kABOf(x) x\n"), [])

    def test_value_of_a_macro(self):
        self.one_wrong("#define kABDefaultSize 13", "is 13 here; the system has 12")

    # The list.

    def test_listed_names_are_not_wrong(self):
        self.assertEqual(self.wrong(
            'extern "C" void ABNothing();\n@interface ABOther : NSObject\n- (void)run;\n@end',
            absent="Made up:\n    ABNothing\n    class ABOther\n"), [])

    def test_a_whole_header_is_listed(self):
        self.write("headers/Other/Other.h",
                   '#pragma once\nextern "C" void ABOne();\nextern "C" void ABTwo();\n')
        self.assertEqual(self.wrong("", absent="Made up:\n    header Other/Other.h\n"), [])

    def test_listed_but_covered(self):
        wrong = self.wrong(RIGHT, absent="Inline functions:\n    ABDraw\n")
        self.assertEqual(len(wrong), 1)
        self.assertIn("absent.txt:2: error: ABDraw: is listed, but the typings have it", wrong[0])

    def test_listed_but_no_longer_declared(self):
        wrong = self.wrong(RIGHT, absent="Inline functions:\n    ABErase\n")
        self.assertEqual(len(wrong), 1)
        self.assertIn("ABErase: is listed, but no longer declared", wrong[0])

    def test_a_name_needs_a_reason(self):
        with self.assertRaisesRegex(check.Failure, "has no reason"):
            self.wrong(RIGHT, absent="    ABDraw\n")

    # What cannot be checked at all.

    def test_headers_that_do_not_compile(self):
        with self.assertRaisesRegex(check.Failure, "AB.h:.*unknown type name 'Nothing'"):
            self.wrong("extern Nothing* nothing;")

    def test_no_headers(self):
        with self.assertRaisesRegex(check.Failure, "has no headers"):
            check.Headers(self.folder)

    def test_no_typings(self):
        with self.assertRaisesRegex(check.Failure, "has no typings"):
            check.Typings(self.folder)


class ProgramTest(Folder):
    def setUp(self):
        super().setUp()
        self.write("headers/AB/AB.h", PREAMBLE)
        self.write("absent.txt", "")
        self.write("package/types/AB.d.ts", TYPINGS)
        self.write("package/build/Versions/1/NativeScript", metadata(VALUES))

    def run_script(self, *arguments, path=None):
        environment = dict(os.environ, PYTHONDONTWRITEBYTECODE="1")
        if path:
            environment["PATH"] = str(path)
        return subprocess.run(
            [sys.executable, SCRIPT, "--declarations", self.folder / "headers", "--absent",
             self.folder / "absent.txt", *arguments], env=environment, text=True,
            capture_output=True, check=False)

    def fake_npm(self, text):
        npm = self.write("bin/npm", f"#!/bin/sh\n{text}\n")
        npm.chmod(npm.stat().st_mode | stat.S_IXUSR)
        return f"{npm.parent}:/usr/bin:/bin"

    def fake_npm_that_fetches(self):
        return self.fake_npm(f"""echo fetched >>{self.folder}/log
place=node_modules/{check.PACKAGE}
mkdir -p $place && cp -r {self.folder}/package/* $place""")

    def fetch(self, path):
        return self.run_script("--fetch-to", self.folder / "fetched", path=path)

    def test_right_and_wrong(self):
        right = self.run_script("--package", self.folder / "package")
        self.assertEqual((right.returncode, right.stderr), (0, ""))
        self.write("headers/AB/Wrong.h", '#include <AB/AB.h>\nextern "C" void ABNothing();')
        wrong = self.run_script("--package", self.folder / "package")
        self.assertEqual(wrong.returncode, 1)
        self.assertIn("ABNothing: the system has no such function", wrong.stdout)
        self.assertIn("1 wrong", wrong.stdout)

    def test_without_the_network(self):
        result = self.fetch(self.fake_npm("echo 'request failed: no such host'; exit 1"))
        self.assertNotEqual(result.returncode, 0)
        self.assertIn("could not get the typings", result.stderr)
        self.assertIn("no such host", result.stderr)

    def test_npm_that_brings_nothing(self):
        result = self.fetch(self.fake_npm("exit 0"))
        self.assertNotEqual(result.returncode, 0)
        self.assertIn("could not get the typings", result.stderr)

    def test_without_npm(self):
        result = self.fetch(self.folder)
        self.assertNotEqual(result.returncode, 0)
        self.assertIn("npm is missing", result.stderr)

    def test_typings_are_fetched_once(self):
        path = self.fake_npm_that_fetches()
        for _ in range(2):
            self.assertEqual(self.fetch(path).returncode, 0)
        self.assertEqual((self.folder / "log").read_text(), "fetched\n")

    def test_another_version_is_fetched_anew(self):
        path = self.fake_npm_that_fetches()
        self.fetch(path)
        self.write("fetched/fetched.json", "{}")
        self.fetch(path)
        self.assertEqual((self.folder / "log").read_text(), "fetched\n" * 2)


if __name__ == "__main__":
    unittest.main()
