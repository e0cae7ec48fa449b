"""What the cases share: the tools under test, and the registered class as the built plug-in has it."""
import json
import os
import pathlib
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "tools" / "docs"), str(ROOT / "tools" / "package")]


def registered_class(host="2014.1"):
    with tempfile.TemporaryDirectory() as defaults:
        command = [os.environ["PLUGHOST"], "describe", "--json", "--host", host, "--plugin", os.environ["PLUGIN"],
                   "--defaults-dir", defaults]
        return json.loads(subprocess.run(command, check=True, stdout=subprocess.PIPE).stdout)
