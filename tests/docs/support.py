"""What the cases share: the tools under test, and the registered class as the built plug-in has it."""
import atexit
import functools
import json
import os
import pathlib
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "tools" / "docs"), str(ROOT / "tools" / "package")]


class Forks:
    """plughost in forks of one process, which takes requests in lines (tests/host/plughost/forks.cpp)."""

    def __init__(self):
        environment = {**os.environ, "PLUGIN_UNDER_TEST": os.environ["PLUGIN"]}
        self.server = subprocess.Popen([os.environ["PLUGHOST_FORKS"]], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                       encoding="utf-8", env=environment)
        atexit.register(self.server.communicate)

    def run(self, folder, words, text=""):
        """Runs a command in the folder, whose "defaults" are its database."""
        print(json.dumps({"folder": str(folder), "words": words, "input": text}), file=self.server.stdin, flush=True)
        ended = json.loads(self.server.stdout.readline())
        return subprocess.CompletedProcess(words, ended["status"], ended["output"], ended["errors"])


@functools.lru_cache
def forks():
    return Forks()


def run_plughost(words, text=""):
    """Runs a command with a database of its own."""
    with tempfile.TemporaryDirectory() as folder:
        return forks().run(folder, words, text)


def registered_class(host="2014.1"):
    return json.loads(run_plughost(["describe", "--json", "--host", host]).stdout)


def run_example(example, run):
    """What each program of the example prints, in a fresh defaults folder that holds its files, until one fails; the
    errors of the last one that ran, and its exit status. `run` gets the folder and the program's name in it."""
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        for path, content in example.files.items():
            file = folder / "defaults" / path
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(content, encoding="utf-8")
        outputs = []
        for code, _ in example.programs:
            (folder / "example.xojo").write_text(code, encoding="utf-8")
            ended = run(folder, "example.xojo")
            outputs.append(ended.stdout)
            if ended.returncode:
                break
        return outputs, ended.stderr, ended.returncode
