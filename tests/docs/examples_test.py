"""The example of each page of the reference prints what stands behind it."""
import os
import unittest

import support  # finds the tools
import reference

COMMAND = [os.environ["PLUGHOST"], "--plugin", os.environ["PLUGIN"], "--check-handles", "run", "--defaults-dir"]


class Cases(unittest.TestCase):
    maxDiff = None


def case_for(example):
    written = [output for _, output in example.programs]
    return lambda self: self.assertEqual(support.run_example(example, COMMAND), (written, "", 0))


for member in reference.read():
    setattr(Cases, f"test_{member.page}", case_for(member.example))


if __name__ == "__main__":
    unittest.main()
