#!/usr/bin/env python3
"""floors_test.py SOURCES BUILD: the product is a house of four floors, and calls and includes go down only.

Held against what was really built: the includes that the compiler wrote down for each object file (also those that come
through other headers), and the symbols that each object file defines and asks for.
"""

import pathlib
import subprocess
import sys

FLOORS = ["hostapi", "bridge", "userdefaults", "plugin"]  # from the ground up
BELOW_THE_HOUSE = "platform"  # the declarations of the system


def floor_of(path):
    return FLOORS.index(path.parts[0]) if path.parts[0] in FLOORS else None


def objects_of(sources, build):
    """The product's sources and the object files made of them for this machine."""
    objects = {}
    for source in sorted(s for floor in FLOORS for s in (sources / floor).rglob("*") if s.suffix in (".cpp", ".mm")):
        name = source.relative_to(sources)
        objects[name] = pathlib.Path("CMakeFiles/product_objects.dir") / f"{name}.o"
        if not (build / objects[name]).exists():
            sys.exit(f"floors_test.py: {name} has not been built")
    return objects


def includes(build, sources, object_file):
    """What the compiler read for one object file, as far as it lies in the checkout."""
    listing = subprocess.run(["ninja", "-C", build, "-t", "deps", object_file], check=True, capture_output=True, text=True)
    read = [build / line.strip() for line in listing.stdout.splitlines()[1:] if line.strip()]
    if not read:
        sys.exit(f"floors_test.py: no includes are known of {object_file}")
    read = [path.resolve() for path in read]
    return [path.relative_to(sources) for path in read if path.is_relative_to(sources) and not path.is_relative_to(build)]


def symbols(build, object_file):
    """The symbols that an object file defines, and those that it asks for."""
    listing = subprocess.run(["llvm-nm-14", "--format=posix", build / object_file], check=True, capture_output=True, text=True)
    rows = [line.split()[:2] for line in listing.stdout.splitlines()]
    return {name for name, kind in rows if kind not in "Uwv"}, {name for name, kind in rows if kind in "Uwv"}


def includes_upwards(name, included):
    home = floor_of(name)
    for path in included:
        floor = floor_of(path)
        if floor is None and path.parts[0] != BELOW_THE_HOUSE:
            yield f"{name} includes {path}, which is outside the product"
        elif floor is not None and floor > home:
            yield f"{name} includes {path}, a floor above"


def calls_upwards(defined, asked):
    lowest = {}
    for name, names in defined.items():
        for symbol in names:
            lowest[symbol] = min(lowest.get(symbol, len(FLOORS)), floor_of(name))
    for name, names in asked.items():
        for symbol in sorted(names):
            if lowest.get(symbol, 0) > floor_of(name):
                yield f"{name} uses {symbol}, which is defined a floor above"


def main(sources, build):
    sources, build = pathlib.Path(sources).resolve(), pathlib.Path(build).resolve()
    defined, asked, faults, edges = {}, {}, [], 0
    for name, object_file in objects_of(sources, build).items():
        included = includes(build, sources, object_file)
        faults += includes_upwards(name, included)
        defined[name], asked[name] = symbols(build, object_file)
        edges += len(included)
    faults += calls_upwards(defined, asked)
    print(f"{len(defined)} files, {edges} includes, {sum(map(len, asked.values()))} symbols asked for")
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
