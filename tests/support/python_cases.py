"""python_cases.py SCRIPT RESULTS: runs the class Cases of a test script; says nothing of cases that pass.

Writes "passed NAME" or "failed NAME" for each case to the file RESULTS; its name goes before theirs.
"""
import importlib
import pathlib
import sys
import unittest


class Results(unittest.TextTestResult):
    file = None  # its path
    successes = 0

    def startTest(self, test):
        super().startTest(test)
        self.passed = False

    def addSuccess(self, test):  # a case that is skipped has not passed
        super().addSuccess(test)
        self.passed = True
        self.successes += 1

    def stopTest(self, test):
        super().stopTest(test)
        case = test.id().rpartition(".")[2].removeprefix("test_")
        print("passed" if self.passed else "failed", f"{self.file.name}.{case}", file=self.opened, flush=True)


def main(script, results):
    Results.file = pathlib.Path(results)
    Results.file.parent.mkdir(parents=True, exist_ok=True)
    Results.opened = Results.file.open("w", encoding="utf-8")
    sys.path.insert(0, str(pathlib.Path(script).parent))
    cases = unittest.defaultTestLoader.loadTestsFromTestCase(importlib.import_module(pathlib.Path(script).stem).Cases)
    ended = unittest.TextTestRunner(verbosity=0, resultclass=Results).run(cases)
    return 0 if 0 < ended.testsRun == ended.successes else 1


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
