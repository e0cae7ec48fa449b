"""The example of each page of the reference prints what stands behind it."""
import unittest

import support  # finds the tools
import reference


def run(folder, program):
    return support.forks().run(folder, ["--check-handles", "run", program])


class Cases(unittest.TestCase):
    maxDiff = None


def case_for(example):
    written = [output for _, output in example.programs]
    return lambda self: self.assertEqual(support.run_example(example, run), (written, "", 0))


for member in reference.read():
    setattr(Cases, f"test_{member.page}", case_for(member.example))


if __name__ == "__main__":
    unittest.main()
