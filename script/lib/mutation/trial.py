"""Runs a test executable against a change."""

import json
import os
import pathlib
import signal
import subprocess
import tempfile
import time

MEMORY = 2 << 30
FILE_SIZE = 256 << 20
SLOW = 0.3  # seconds; tests that take longer run after the others


class Trial:
    """A test executable with its environment, its time limit and the order of its tests."""

    def __init__(self, program, environment):
        self.program = program
        self.environment = {**os.environ, **environment}
        self.environment.pop("LUMOWATT_MUTANT", None)
        self.stages = ["*"]
        self.limit = 600.0
        started = time.monotonic()
        with tempfile.NamedTemporaryFile("r", suffix=".json") as report:
            if not self.passes(0, "*", f"--gtest_output=json:{report.name}"):
                raise SystemExit(f"mutate: {program.name} fails without any change; run\n"
                                 f"  {program}")
            suites = json.load(report)["testsuites"]
        self.limit = 10 + 5 * (time.monotonic() - started)
        slow = [f"{suite['name']}.{test['name']}" for suite in suites
                for test in suite["testsuite"] if float(test["time"].rstrip("s")) > SLOW]
        if slow:
            self.stages = [f"-{':'.join(slow)}", ":".join(slow)]

    def finds(self, number):
        """Whether a test fails, crashes or hangs with the change of this number."""
        return not all(self.passes(number, stage) for stage in self.stages)

    def passes(self, number, tests, *options):
        seconds = max(2, round(self.limit / 2))  # of the processor: independent of what else runs
        with tempfile.TemporaryDirectory(prefix="mutate-", ignore_cleanup_errors=True) as folder:
            environment = {**self.environment, "LUMOWATT_MUTANT": str(number), "TMPDIR": folder}
            with subprocess.Popen(
                    ["prlimit", f"--as={MEMORY}", f"--fsize={FILE_SIZE}", "--core=0",
                     f"--cpu={seconds}", self.program, "--gtest_fail_fast", "--gtest_brief=1",
                     f"--gtest_filter={tests}", *options],
                    cwd=folder, env=environment, start_new_session=True,
                    stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                    stderr=subprocess.DEVNULL) as process:
                try:
                    return process.wait(self.limit) == 0
                except subprocess.TimeoutExpired:
                    return False
                finally:
                    end_processes(process.pid, f"TMPDIR={folder}")


def end_processes(group, mark):
    """Kills a process group, and the processes that left it but have the mark in the environment."""
    try:
        os.killpg(group, signal.SIGKILL)
    except ProcessLookupError:
        pass
    for file in pathlib.Path("/proc").glob("[0-9]*/environ"):
        try:
            if mark.encode() in file.read_bytes().split(b"\0"):
                os.kill(int(file.parent.name), signal.SIGKILL)
        except OSError:
            pass  # it has ended, or is somebody else's
