"""The archive for users, dist/NSUserDefaults-VERSION.zip.

package.py make DYLIB SITE FOLDER   makes the archive in FOLDER, looks it over and prints its path
package.py verify ARCHIVE           looks an archive over: every file is in the manifest with its checksum, and the links
                                    of its texts lead to files that are there

The same inputs give the same bytes: files stand in the order of their names, with one date and one mode.
"""
import hashlib
import pathlib
import re
import sys
import zipfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
HERE = ROOT / "tools" / "package"
MANIFEST = "MANIFEST.sha256"
DATE = (1980, 1, 1, 0, 0, 0)  # the first one that an archive can hold
MODE = 0o100644

# What a user wants of the project's own README; how to build and test it is no part of that.
README_SECTIONS = ["In a program", "Where it runs", "Exceptions and the family", "What it does not do"]

# What runs the examples here is no part of the archive.
FOR_DEVELOPERS = {"examples/README.md", "examples/run.sh"}


class Mistake(Exception):
    pass


def readme(text, contents):
    text = re.sub(r"^\| Here \|.*\n", "", text, flags=re.M)  # where it is developed
    head, *rest = re.split(r"^## (.+)\n", text, flags=re.M)
    sections = dict(zip(rest[::2], rest[1::2]))
    for name in README_SECTIONS:
        if name not in sections:
            raise Mistake(f"README.md has no section \"{name}\"")
    parts = [head, contents + "\n"] + [f"## {name}\n{sections[name]}" for name in README_SECTIONS]
    return "".join(parts).rstrip() + "\n"


def tree(folder, prefix):
    files = {prefix + path.relative_to(folder).as_posix(): path.read_bytes()
             for path in folder.rglob("*") if path.is_file()}
    if not files:
        raise Mistake(f"{folder}: there are no files")
    return files


def contents(dylib, site, root=ROOT):
    def text(path):
        return (root / path).read_text(encoding="utf-8")

    files = {
        "NSUserDefaults.dylib": dylib.read_bytes(),
        "NSUserDefaults.map": dylib.with_suffix(".map").read_bytes(),
        "README.md": readme(text("README.md"), text("tools/package/contents.md")).encode(),
        "INSTALL.md": text("tools/package/INSTALL.md").encode(),
        "CHANGELOG.md": text("CHANGELOG.md").encode(),
    }
    files.update(tree(site, "reference/"))
    files.update({name: content for name, content in tree(root / "examples", "examples/").items()
                  if name not in FOR_DEVELOPERS})
    files[MANIFEST] = "".join(f"{hashlib.sha256(files[name]).hexdigest()}  {name}\n" for name in sorted(files)).encode()
    return files


def make(dylib, site, folder, root=ROOT):
    name = "NSUserDefaults-" + (root / "VERSION").read_text(encoding="utf-8").strip()
    archive = folder / f"{name}.zip"
    files = contents(dylib, site, root)
    folder.mkdir(parents=True, exist_ok=True)
    with zipfile.ZipFile(archive, "w") as written:
        for path in sorted(files):
            entry = zipfile.ZipInfo(f"{name}/{path}", DATE)
            entry.create_system = 3  # Unix, whose modes these are
            entry.external_attr = MODE << 16
            entry.compress_type = zipfile.ZIP_DEFLATED
            written.writestr(entry, files[path], compresslevel=9)
    return archive


def problems(archive):
    with zipfile.ZipFile(archive) as opened:
        top = archive.stem + "/"
        files = {name.removeprefix(top): opened.read(name) for name in opened.namelist()}
        found = [f"{name} is not in the folder {top}" for name in opened.namelist() if not name.startswith(top)]
    if MANIFEST not in files:
        return found + [f"there is no {MANIFEST}"]
    listed = {}
    for line in files[MANIFEST].decode().splitlines():
        checksum, _, name = line.partition("  ")
        listed[name] = checksum
    for name in sorted(listed.keys() | files.keys() - {MANIFEST}):
        if name not in files:
            found.append(f"{name} is in the manifest only")
        elif name not in listed:
            found.append(f"{name} is not in the manifest")
        elif hashlib.sha256(files[name]).hexdigest() != listed[name]:
            found.append(f"{name} has another checksum than in the manifest")
    for name in files:
        if name.endswith(".md") and "/" not in name:
            for address in re.findall(r"\]\(([^)\s]+)\)", files[name].decode()):
                if not re.match(r"\w+:", address) and address.partition("#")[0] not in files:
                    found.append(f"{name}: {address} leads nowhere")
    return found


def main(arguments):
    if arguments[:1] == ["make"] and len(arguments) == 4:
        archive = make(*map(pathlib.Path, arguments[1:]))
    elif arguments[:1] == ["verify"] and len(arguments) == 2:
        archive = pathlib.Path(arguments[1])
    else:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    found = problems(archive)
    for line in found:
        print(f"{archive}: {line}", file=sys.stderr)
    if not found:
        print(archive)
    return 1 if found else 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv[1:]))
    except (Mistake, OSError, zipfile.BadZipFile) as mistake:
        sys.exit(f"package.py: {mistake}")
