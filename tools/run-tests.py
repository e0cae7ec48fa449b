#!/usr/bin/env python3
"""run-tests.py PRESET [CTEST-OPTION...]: runs the tests of a build tree; the last line says how many passed and failed.

Prints what failed, with its output, and on a terminal, while the tests run, one line of progress. A test program tells
of each of its cases in a file of the tree's test-results; any other test is one case. A case that did not run counts as
failed, and so does a run without tests.
"""
import os
import shutil
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

SECONDS_BETWEEN_LOOKS = 0.2


def told(results):
    """What each program has told so far: {program: {case: passed}}."""
    programs = {}
    for file in sorted(results.glob("*")):
        lines = [line.split(" ", 1) for line in file.read_text().splitlines(keepends=True) if line.endswith("\n")]
        programs[file.name] = {name.rstrip("\n"): verdict == "passed" for verdict, name in lines}
    return programs


def count(cases):
    passed = sum(cases.values())
    return f"{passed} passed, {len(cases) - passed} failed"


def run_ctest(arguments, junit, results):
    # One more than there are processors: some cases wait, for one that hangs and for each other.
    command = ["ctest", "--preset", arguments[0], "--quiet", "--parallel", str(os.cpu_count() + 1), "--output-junit", junit,
               *arguments[1:]]
    ctest = subprocess.Popen(command, stdin=subprocess.DEVNULL)
    while True:
        try:
            return ctest.wait(SECONDS_BETWEEN_LOOKS)
        except subprocess.TimeoutExpired:
            if sys.stdout.isatty():
                cases = {name: passed for program in told(results).values() for name, passed in program.items()}
                print(f"\r\033[K{count(cases)}", end="", flush=True)
        finally:
            if sys.stdout.isatty() and ctest.returncode is not None:
                print("\r\033[K", end="")


def outcome(junit, results):
    """All cases, {name: passed}; prints what the tests that failed have said."""
    programs = told(results)
    cases = {}
    for test in ElementTree.parse(junit).getroot().iter("testcase"):
        name, passed = test.get("name"), test.get("status") == "run"
        of_program = programs.get(name, {})
        cases.update(of_program)
        # A program that fails with all its cases passed has not come to its end.
        if not of_program or (not passed and all(of_program.values())):
            cases[name] = passed
        if not passed:
            why = [part.get("message") for kind in ("failure", "error", "skipped") for part in test.iter(kind)]
            print(f"{name}: {', '.join(filter(None, why)) or 'did not run'}")
            print(test.findtext("system-out", "").rstrip())
    return cases


def same_on_both_files(cases):
    """The black-box tests run on each file of the plug-in, under the same names. A case that passed on one alone is a
    difference between the two, and a failure even when every case that ran has passed."""
    on_so, on_dylib = ({name.removeprefix(prefix) for name, passed in cases.items() if passed and name.startswith(prefix)}
                       for prefix in ("so.", "dylib."))
    if not on_so or not on_dylib:  # a run of chosen tests may be about one file alone
        return True
    for name in sorted(on_so ^ on_dylib):
        print(f"passed on the {'.so' if name in on_so else 'dylib'} only: {name}")
    return on_so == on_dylib


def main(arguments):
    if not arguments:
        sys.exit(__doc__)
    tree = Path(__file__).resolve().parent.parent / "build" / arguments[0]
    junit, results = tree / "test-results.xml", tree / "test-results"
    junit.unlink(missing_ok=True)
    shutil.rmtree(results, ignore_errors=True)
    status = run_ctest(arguments, junit, results)
    cases = outcome(junit, results) if junit.exists() else {}
    is_same = same_on_both_files(cases)
    print(count(cases))
    return 0 if status == 0 and cases and all(cases.values()) and is_same else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
