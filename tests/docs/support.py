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


def run_example(example, command):
    """What each program of the example prints, in a fresh defaults folder that holds its files, until one fails; the
    errors of the last one that ran, and its exit status."""
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        for path, content in example.files.items():
            file = folder / "defaults" / path
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(content, encoding="utf-8")
        program = folder / "example.xojo"
        outputs = []
        for code, _ in example.programs:
            program.write_text(code, encoding="utf-8")
            ended = subprocess.run([*command, str(folder / "defaults"), str(program)], stdin=subprocess.DEVNULL,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE, encoding="utf-8")
            outputs.append(ended.stdout)
            if ended.returncode:
                break
        return outputs, ended.stderr, ended.returncode
