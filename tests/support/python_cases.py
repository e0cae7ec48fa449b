"""python_cases.py SCRIPT RESULTS: runs the class Cases of a test script; says nothing of cases that pass.

Writes "passed NAME" or "failed NAME" for each case to the file RESULTS; its name goes before theirs.
"""
import importlib.util
import pathlib
import sys
import unittest


class Results(unittest.TextTestResult):
    file = None

    def startTest(self, test):
        super().startTest(test)
        self.passed = False

    def addSuccess(self, test):  # a case that is skipped has not passed
        super().addSuccess(test)
        self.passed = True

    def stopTest(self, test):
        super().stopTest(test)
        case = test.id().rpartition(".")[2].removeprefix("test_")
        print("passed" if self.passed else "failed", f"{self.file.name}.{case}", file=self.opened, flush=True)
        self.all_passed = self.passed and getattr(self, "all_passed", True)


def main(script, results):
    Results.file = pathlib.Path(results)
    Results.file.parent.mkdir(parents=True, exist_ok=True)
    Results.opened = Results.file.open("w", encoding="utf-8")
    sys.path.insert(0, str(pathlib.Path(script).parent))
    specification = importlib.util.spec_from_file_location("cases", script)
    module = importlib.util.module_from_spec(specification)
    specification.loader.exec_module(module)
    cases = unittest.defaultTestLoader.loadTestsFromTestCase(module.Cases)
    ended = unittest.TextTestRunner(verbosity=0, resultclass=Results).run(cases)
    return 0 if ended.wasSuccessful() and getattr(ended, "all_passed", False) else 1


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
