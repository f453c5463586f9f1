"""Prints what llvm-cov exported as one table. Called by tools/coverage.sh."""
import json
import os
import sys

FOLDERS = ["src/base", "src/radio", "src/document", "src/files", "src/checkup", "src/link",
           "src/sim"]
# The real port needs real devices; another test has them.
PORT = ["src/serial/device_guard.cpp", "src/serial/lock_file.cpp", "src/serial/serial_port.cpp"]
AIMS = {"src/base": (100, 95), "src/radio": (100, 95), "src/document": (100, 95),
        "src/files": (100, 95), "src/link": (100, 95)}
# Lines that cannot run, by file.
EXPLAINED = {
    # The closing braces of two blocks that end with break.
    "src/radio/channel_codec.cpp": 2,
}


def load(path):
    with open(path, encoding="utf-8") as file:
        files = json.load(file)["data"][0]["files"]
    return {os.path.relpath(file["filename"]): file for file in files}


def counts(file):
    """Covered and all: lines, branches."""
    summary = file["summary"]
    return [summary[kind][key] for kind in ("lines", "branches") for key in ("covered", "count")]


def percent(covered, count):
    return f"{100 * covered / count:6.1f} %" if count else "       -"


def row(name, c):
    print(f"{name:34}{c[0]:6}/{c[1]:<6}{percent(c[0], c[1])}{c[2]:8}/{c[3]:<6}{percent(c[2], c[3])}")


def missed_lines(file):
    """Lines on which a piece of code starts that never ran, and branches never taken, by line."""
    lines = set()
    for line, _, count, has_count, is_entry, is_gap in file["segments"]:
        if has_count and is_entry and count == 0 and not is_gap:
            lines.add(line)
    # A function of a template or a header stands once for each use; one that took a branch is enough.
    ways = {}
    for branch in file["branches"]:
        place = tuple(branch[:4])
        true, false = ways.get(place, (0, 0))
        ways[place] = (true + branch[4], false + branch[5])
    branches = sorted((place[0], place[1], way) for place, (true, false) in ways.items()
                      for way, taken in (("true", true), ("false", false)) if taken == 0)
    return sorted(lines), branches


def main():
    folder = sys.argv[1]
    show_missed = "--missed" in sys.argv[2:]
    core = load(os.path.join(folder, "core.json"))
    port = load(os.path.join(folder, "port.json"))
    print(f"{'file':34}{'lines':>13}{'':8}{'branches':>15}")
    failed = []
    for name in FOLDERS:
        total = [0, 0, 0, 0]
        explained = 0
        for path in sorted(core):
            if os.path.dirname(path) != name or path.rsplit(".")[0] + ".cpp" in PORT:
                continue
            figures = counts(core[path])
            row(path, figures)
            total = [a + b for a, b in zip(total, figures)]
            explained += EXPLAINED.get(path, 0)
            if show_missed:
                lines, branches = missed_lines(core[path])
                for line in lines:
                    print(f"    {path}:{line}: never runs")
                for line, column, way in branches:
                    print(f"    {path}:{line}:{column}: never {way}")
        row(f"{name}: all", total)
        print()
        lines_aim, branches_aim = AIMS.get(name, (0, 0))
        if 100 * (total[0] + explained) < lines_aim * total[1] or 100 * total[2] < branches_aim * total[3]:
            failed.append(name)
    for path in PORT:
        row(f"{path} (programs_test)", counts(port[path]))
    for name in failed:
        lines_aim, branches_aim = AIMS[name]
        print(f"{name} is below {lines_aim} % of the lines or {branches_aim} % of the branches",
              file=sys.stderr)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
