"""The programs of the folder examples/, in the order of the table in its README, each with what it prints beside it."""
import dataclasses
import re

import reference

FOLDER = reference.ROOT / "examples"
SUFFIX = ".xojo_script"


@dataclasses.dataclass
class Example:
    name: str
    task: str
    programs: dict  # file name: code; one program, or several that run one after the other
    managed: dict  # what an administrator has fixed, file name: content
    runs: int  # how often the program is started
    output: str

    @property
    def title(self):
        return self.name.replace("_", " ").capitalize()


def read(folder=FOLDER):
    table = (folder / "README.md").read_text(encoding="utf-8")
    rows = re.findall(r"^\| (.+?) \| \[(\w+)\]\(\S+?\).* \|$", table, flags=re.M)
    examples = [example(folder, name, task) for task, name in rows]
    missing = {path.stem for path in folder.glob("*.expected")} - {example.name for example in examples}
    if missing:
        raise reference.Mistake(f"examples/README.md does not name {', '.join(sorted(missing))}")
    return examples


def texts(paths):
    return {path.name: path.read_text(encoding="utf-8") for path in sorted(paths)}


def example(folder, name, task):
    single = folder / (name + SUFFIX)
    programs = texts([single] if single.exists() else (folder / name).glob("*" + SUFFIX))
    runs = folder / f"{name}.runs"
    return Example(name, task, programs, texts((folder / f"{name}.managed").glob("*")),
                   int(runs.read_text()) if runs.exists() else 1, (folder / f"{name}.expected").read_text(encoding="utf-8"))
