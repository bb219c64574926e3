"""Runs mutation tests. script/mutate describes the arguments."""

import argparse
import os
import pathlib
import random
import re
import signal
import subprocess
import sys
import time
from concurrent.futures import ThreadPoolExecutor

from build import JOBS, Build
from trial import Trial

FOLDERS = ["src/base", "src/telemetry", "src/format", "src/render", "src/menubar", "src/cli",
           "src/platform/linux/power_supply"]
# Test executables of folders whose tests are not, or not only, in the executable of the same name.
EXECUTABLES = {"artwork": ("artwork_test", "icons_test"),
               "freedesktop": ("freedesktop_test", "program_test"),
               "posix": ("linux_test",)}


def arguments():
    parser = argparse.ArgumentParser(prog="script/mutate", description=(
        "Changes the sources one place at a time and runs the tests of their folder. Says which "
        "changes no test finds."))
    parser.add_argument("folders", nargs="*", default=FOLDERS, metavar="FOLDER")
    parser.add_argument("--seconds", type=int, metavar="N",
                        help="try changes for so long, in an order that makes them a fair sample")
    parser.add_argument("--since", metavar="COMMIT", help="try only lines changed since then")
    parser.add_argument("--again", action="store_true", help="try only what survived last time")
    return parser.parse_args()


def tests_of(path, tests):
    """Returns the test executables of the innermost folder that has any."""
    for part in reversed(pathlib.PurePath(path).parent.parts):
        names = EXECUTABLES.get(part, (f"{part}_test",))
        if tests.issuperset(names):
            return names
    return ()


def sources_below(build, folders):
    """Returns the sources in the folders, each with the test executables of its folder."""
    tests = build.tests()
    result = {}
    for folder in folders:
        found = [str(file.relative_to(build.root)) for file in (build.root / folder).rglob("*")
                 if file.suffix in (".cpp", ".h")]
        if not found:
            misuse(f"no sources in {folder}")
        tested = {path: names for path in found if (names := tests_of(path, tests))}
        if not tested:
            misuse(f"no test is of {folder}")
        result |= tested
    inputs = {name: build.inputs(name) for name in all_of(result)}
    for path, names in sorted(result.items()):
        if path.endswith(".cpp"):
            result[path] = tuple(name for name in names if path in inputs[name])
            if not result[path]:
                print(f"{path} is left out: it is no part of {' or '.join(names)}", file=sys.stderr)
                del result[path]
    return dict(sorted(result.items()))


def all_of(tests):
    """Returns the test executables of all sources, sorted and without duplicates."""
    return sorted({name for names in tests.values() for name in names})


def changed_lines(root, commit):
    """Returns for each file the numbers of the lines that differ from a commit."""
    diff = subprocess.run(["git", "diff", "-U0", "--no-prefix", "--no-color", "--no-ext-diff",
                           commit, "--", "src"], cwd=root, capture_output=True, text=True)
    if diff.returncode != 0:
        misuse(diff.stderr.strip())
    lines = {}
    path = None
    for line in diff.stdout.splitlines():
        if line.startswith("+++ "):
            path = line[4:].rstrip("\t")
        elif found := re.match(r"@@ -\S+ \+(\d+)(?:,(\d+))? @@", line):
            first = int(found[1])
            lines.setdefault(path, set()).update(range(first, first + int(found[2] or 1)))
    return lines


def equivalents(root):
    """Returns the keys of the changes that tests/equivalent_changes lists."""
    file = root / "tests/equivalent_changes"
    keys = []
    path = line = None
    for text in file.read_text("utf-8").splitlines() if file.exists() else []:
        label, _, value = text.partition(": ")
        value = " ".join(value.split())
        if label == "file":
            path = value
        elif label == "line":
            line = value
        elif label == "change":
            keys.append((path, line, value))
    return keys


def misuse(message):
    print(f"script/mutate: {message}", file=sys.stderr)
    sys.exit(2)


class Progress:
    """Reports the progress on the standard error."""

    def __init__(self, total):
        self.total = total
        self.done = self.survived = 0
        self.told = time.monotonic()

    def update(self, is_found):
        self.done += 1
        self.survived += not is_found
        interval = 0.5 if sys.stderr.isatty() else 30
        if time.monotonic() - self.told > interval:
            self.told = time.monotonic()
            print(f"{self.done:,} of {self.total:,} changes tried, {self.survived:,} not found",
                  file=sys.stderr, end="\r" if sys.stderr.isatty() else "\n")


def try_changes(build, tests, changes, seconds):
    """Tests the changes. Returns a dictionary from the number of a change to True if a test detects
    it, False if none does, or None if it does not compile. Changes that were not tested before the
    time ran out are missing."""
    trials = {name: Trial(build.binaries / name, build.environment(name))
              for name in all_of({each.key[0]: tests[each.key[0]] for each in changes})}
    end = time.monotonic() + seconds if seconds else float("inf")
    progress = Progress(len(changes))
    results = {}

    def try_one(change, is_alone=False):
        if time.monotonic() >= end:
            return
        names = tests[change.key[0]]
        if is_alone and not build.build_alone(change, names):
            results[change.number] = None
            progress.update(True)
            return
        number = 0 if is_alone else change.number
        results[change.number] = any(trials[name].finds(number) for name in names)
        progress.update(results[change.number])

    with ThreadPoolExecutor(2 * JOBS) as pool:  # many tests spend most of their time waiting
        list(pool.map(try_one, [each for each in changes if each.place.switchable]))
    alone = [each for each in changes if not each.place.switchable]
    for change in sorted(alone, key=lambda each: each.key[0]):  # few; each is built separately
        try_one(change, True)
    build.restore()
    return results


def report(build, changes, results, started):
    """Prints the survivors and the score. Returns whether all survivors are explained."""
    remembered = build.folder / "survivors"
    listed = set(equivalents(build.root))
    found = sum(result is True for result in results.values())
    programs = sum(result is not None for result in results.values())
    survivors = [each for each in changes if results.get(each.number) is False]
    equal = [each for each in survivors if each.key in listed]
    unexplained = [each for each in survivors if each.key not in listed]
    for change in unexplained:
        source = build.sources[change.key[0]]
        print(f"{source.path}:{source.line(change.place.start)}: {change.change}")

    everything = [each for source in build.sources.values() for each in source.changes()]
    known = {each.key: each.number for each in everything}
    stale = [key for key in listed if key[0] in build.sources and key not in known
             or results.get(known.get(key), False) is not False]
    for path, line, change in sorted(stale):
        print(f"{path}: not equivalent or no longer there: {change}, in: {line}")

    before = set(remembered.read_text("utf-8").splitlines()) if remembered.exists() else set()
    before -= {"\t".join(each.key) for each in everything if each.number in results}
    now = {"\t".join(each.key) for each in unexplained}
    remembered.write_text("".join(f"{line}\n" for line in sorted(before | now)), "utf-8")

    share = f" ({100 * found / programs:.1f} %)" if programs else ""
    print(f"{found:,} of {programs:,} changes found{share}; {len(equal):,} equivalent, "
          f"{len(unexplained):,} survived, {len(results) - programs:,} were no programs")
    if len(results) < len(changes):
        print(f"{len(changes) - len(results):,} were not tried")
    minutes, seconds = divmod(round(time.monotonic() - started), 60)
    print(f"It took {minutes} min {seconds} s.")
    return not unexplained and not stale


def main():
    started = time.monotonic()
    for number in (signal.SIGINT, signal.SIGTERM):
        signal.signal(number, lambda *_: os._exit(130))  # child processes end with it
    options = arguments()
    root = pathlib.Path(__file__).resolve().parents[3]
    build = Build(root)
    for folder in options.folders:
        if not (root / folder).is_dir():
            misuse(f"no folder {folder}")
    build.folder.mkdir(parents=True, exist_ok=True)
    if not (build.binaries / "build.ninja").exists():
        build.copy()
    build.configure()
    tests = sources_below(build, [folder.rstrip("/") for folder in options.folders])
    build.parse(tests)
    build.copy()
    changes = [each for source in build.sources.values() for each in source.changes()]
    if options.since:
        lines = changed_lines(root, options.since)
        changes = [each for each in changes if any(
            line in lines.get(each.key[0], ()) for line in lines_of(build, each))]
    if options.again:
        file = build.folder / "survivors"
        last = set(file.read_text("utf-8").splitlines()) if file.exists() else set()
        changes = [each for each in changes if "\t".join(each.key) in last]
    if options.seconds:
        random.Random(1).shuffle(changes)
    print(f"building {len(changes):,} changes", file=sys.stderr)
    build.build(all_of(tests))
    results = try_changes(build, tests, changes, options.seconds)
    changes.sort(key=lambda each: (each.key[0], each.place.start))
    sys.exit(0 if report(build, changes, results, started) else 1)


def lines_of(build, change):
    source = build.sources[change.key[0]]
    return range(source.line(change.place.start), source.line(change.place.end) + 1)


main()
