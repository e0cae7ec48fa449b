"""What becomes of cases that pass, fail and are skipped, and of a script without cases."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

RUNNER = pathlib.Path(__file__).with_name("python_cases.py")
CLASS = "import unittest\nclass Cases(unittest.TestCase):\n"
PASSES = "    def test_passes(self): pass\n"
FAILS = "    def test_fails(self):\n        with self.subTest(): self.fail()\n"
IS_SKIPPED = "    def test_is_skipped(self): self.skipTest('')\n"


class Cases(unittest.TestCase):
    def told(self, cases):
        with tempfile.TemporaryDirectory() as folder:
            script, results = pathlib.Path(folder, "some_test.py"), pathlib.Path(folder, "results/some")
            script.write_text(CLASS + cases, encoding="utf-8")
            status = subprocess.run([sys.executable, RUNNER, script, results], stderr=subprocess.DEVNULL).returncode
            return status, results.read_text(encoding="utf-8")

    def test_all_that_pass_pass(self):
        self.assertEqual(self.told(PASSES), (0, "passed some.passes\n"))

    def test_one_that_fails_fails_the_script(self):
        self.assertEqual(self.told(FAILS + PASSES), (1, "failed some.fails\npassed some.passes\n"))

    def test_one_that_is_skipped_has_failed(self):
        self.assertEqual(self.told(IS_SKIPPED + PASSES), (1, "failed some.is_skipped\npassed some.passes\n"))

    def test_no_cases_are_a_failure(self):
        self.assertEqual(self.told("    pass\n"), (1, ""))


if __name__ == "__main__":
    unittest.main()
