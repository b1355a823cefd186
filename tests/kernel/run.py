#!/usr/bin/env python3
"""Runs the tests in the virtual machine, a class at a time, and says how each went.

    run.py [CLASS or CLASS.test_name]..."""

import contextlib
import io
import sys
import time
import unittest

import chain_test
import device_tests
import press_test
import reversal_test
import touch_test
from kernel_desktop import KernelDesktop


def classes() -> dict[str, type]:
    modules = chain_test, press_test, reversal_test, touch_test, device_tests
    return {name: value for module in modules
            for name, value in vars(module).items()
            if isinstance(value, type) and issubclass(value, unittest.TestCase)
            and unittest.defaultTestLoader.getTestCaseNames(value)}


def main(wanted) -> int:
    known = classes()
    failed, begin = [], time.monotonic()
    for name in wanted or known:
        name, _, test = name.partition(".")
        if name not in known:
            print(f"no class {name}; there are: {' '.join(known)}")
            return 2
        loader = unittest.defaultTestLoader
        suite = (unittest.TestSuite([known[name](test)]) if test
                 else loader.loadTestsFromTestCase(known[name]))
        print(f"\n== {name}", flush=True)
        start, said = time.monotonic(), io.StringIO()
        with contextlib.redirect_stdout(said):
            result = unittest.TextTestRunner(stream=sys.__stdout__, verbosity=2).run(suite)
        if not result.wasSuccessful() or not result.testsRun:
            failed.append(name)
            print(f"{said.getvalue()}The pointer was last seen at {list(KernelDesktop.places)}.")
        print(f"== {name}: {result.testsRun} tests, {time.monotonic() - start:.1f} s", flush=True)
    print(f"\n== all: {time.monotonic() - begin:.1f} s; {', '.join(failed) or 'nothing'} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
