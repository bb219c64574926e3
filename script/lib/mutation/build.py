"""Builds the tests with changed sources in a copy of the project."""

import json
import os
import re
import shlex
import shutil
import subprocess
import zlib

from changes import Source
from schema import HEADER, blame, render

JOBS = os.cpu_count() or 1
# The assertions of the library crash a program in which a change reads an empty optional.
FLAGS = ("-O1 -w -ferror-limit=0 -Wno-narrowing -Wno-invalid-constexpr -D_GLIBCXX_ASSERTIONS "
         "-include {}")
MESSAGE = re.compile(r"^(/[^:\n]+):(\d+):(\d+): (?:fatal )?(error|note): (.*)", re.M)


class Build:
    """The copy of the project in build/mutate, and its build."""

    def __init__(self, root):
        self.root = root
        self.folder = root / "build/mutate"
        self.tree = self.folder / "tree"
        self.binaries = self.folder / "build"
        self.sources = {}  # the changed sources, by path

    # The copy

    def write(self, path, contents):
        """Writes a file of the copy. Leaves a file with the same contents untouched, so that it is not
        rebuilt."""
        file = self.tree / path
        if not file.exists() or file.read_bytes() != contents:
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_bytes(contents)

    def copy(self):
        """Updates the copy, except for the changed sources."""
        listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others",
                                 "--exclude-standard"], cwd=self.root, check=True,
                                capture_output=True, text=True).stdout.split("\0")
        paths = {path for path in listed if path and (self.root / path).is_file()}
        for path in sorted(paths - self.sources.keys()):
            self.write(path, (self.root / path).read_bytes())
            shutil.copymode(self.root / path, self.tree / path)
        for file in list(self.tree.rglob("*")):
            if file.is_file() and str(file.relative_to(self.tree)) not in paths:
                file.unlink()
        self.write("../switch.h", HEADER.encode())

    def configure(self):
        if not (self.binaries / "build.ninja").exists():
            flags = FLAGS.format(shlex.quote(str(self.folder / "switch.h")))
            subprocess.run(["cmake", "-S", self.tree, "-B", self.binaries, "-G", "Ninja",
                            "-DCMAKE_CXX_COMPILER=clang++", "-DCMAKE_BUILD_TYPE=Debug",
                            "-DCMAKE_CXX_FLAGS_DEBUG=", f"-DCMAKE_CXX_FLAGS={flags}"],
                           check=True, stdout=subprocess.DEVNULL)

    def ninja(self, *arguments):
        return subprocess.run(["setpriv", "--pdeathsig", "TERM",
                               "ninja", "-C", self.binaries, *arguments],
                              check=False, capture_output=True, text=True)

    # The tests

    def tests(self):
        """Returns the names of the test executables."""
        targets = self.ninja("-t", "targets", "all").stdout
        return set(re.findall(r"^(\w+_test): CXX_EXECUTABLE", targets, re.M))

    def inputs(self, test):
        """Returns the sources, without headers, that a test executable is built from."""
        prefix = f"{self.tree}/"
        return {line.removeprefix(prefix) for line in
                self.ninja("-t", "inputs", test).stdout.splitlines() if line.startswith(prefix)}

    def environment(self, test):
        """Returns the environment variables that CTest sets for a test executable."""
        shown = subprocess.run(["ctest", "--show-only=json-v1", "--label-regex", f"^{test}$"],
                               cwd=self.binaries, check=True, capture_output=True, text=True)
        properties = json.loads(shown.stdout)["tests"][0]["properties"]
        pairs = next((each["value"] for each in properties if each["name"] == "ENVIRONMENT"), [])
        return dict(pair.split("=", 1) for pair in pairs)

    # The changes

    def parse(self, paths):
        """Parses the sources and generates their changes."""
        commands = json.loads((self.binaries / "compile_commands.json").read_text("utf-8"))
        by_path = {os.path.relpath(each["file"], self.tree): each["command"] for each in commands}
        any_command = next(each for path, each in by_path.items() if path.startswith("src/"))
        for path in paths:
            command = by_path.get(path, any_command)  # headers are not in the database
            words = shlex.split(command.replace(str(self.tree), str(self.root)))
            source = Source(self.root, path, ["-x", "c++", *words[1:words.index("-o")]])
            first = zlib.crc32(path.encode()) % 100_000 * 10_000
            for at, change in enumerate(source.changes(), first + 1):
                change.number = at
            identify(source)
            self.sources[path] = source

    def build(self, tests):
        """Builds the tests with all changes that can be switched on at run time. Removes the changes
        that cause compiler errors until the compiler accepts the rest."""
        rendered = {path: render(source) for path, source in self.sources.items()}
        while True:
            for path, code in rendered.items():
                self.write(path, code)
            result = self.ninja("-j", str(JOBS), "-k", "0", *tests)
            if result.returncode == 0:
                return
            blamed = self.blame(result.stdout, rendered)
            if not blamed:
                raise SystemExit(f"{result.stdout}\nmutate: the changed sources cannot be built")
            for path in blamed:
                rendered[path] = render(self.sources[path])

    def blame(self, output, rendered):
        """Marks the places that cause compiler errors as not switchable. Returns the paths of the
        affected sources."""
        paths = set()
        messages = list(MESSAGE.finditer(output))
        at = 0
        while at < len(messages):
            end = at + 1
            while end < len(messages) and messages[end][4] == "note":
                end += 1
            found = [each for message in messages[at:end]
                     if (each := self.culprit(message, rendered))]
            direct = self.culprit(messages[at], rendered)
            for path, place, constant in [direct] if direct and direct[1] else found:
                paths.add(path)
                if place:
                    place.switchable = False
                elif not constant.fixed:
                    constant.fixed = True
                    for each in self.sources[path].places.values():
                        if constant.start <= each.start < constant.end:
                            each.switchable = False
            at = end
        return paths

    def culprit(self, message, rendered):
        """Returns the path, and the place or the constant, that a compiler message refers to."""
        path = os.path.relpath(os.path.realpath(message[1]), self.tree)
        if path not in rendered:
            return None
        lines = rendered[path].split(b"\n")
        offset = sum(len(line) + 1 for line in lines[:int(message[2]) - 1]) + int(message[3]) - 1
        place, constant = blame(self.sources[path], rendered[path], offset)
        return (path, place, None if place else constant) if place or constant else None

    def build_alone(self, change, tests):
        """Builds the tests with one permanent change. Returns whether they compile."""
        source = next(each for each in self.sources.values()
                      if each.places.get((change.place.start, change.place.end)) is change.place)
        self.restore()  # removes the previous change
        self.write(source.path, render(source, change))
        return self.ninja("-j", str(JOBS), *tests).returncode == 0

    def restore(self):
        for path, source in self.sources.items():
            self.write(path, render(source))


def identify(source):
    """Sets the key of each change. Numbers equal changes of equal lines in their order."""
    lines = source.bytes.decode().split("\n")
    seen = {}
    for change in sorted(source.changes(), key=lambda each: each.place.start):
        line = " ".join(lines[source.line(change.place.start) - 1].split())
        times = seen[line, change.change] = seen.get((line, change.change), 0) + 1
        if times > 1:
            change.change += f" (occurrence {times})"
        change.key = (source.path, line, change.change)
