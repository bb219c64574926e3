"""Runs a test executable with a change."""

import json
import os
import pathlib
import signal
import subprocess
import tempfile
import time

MEMORY = 2 << 30
FILE_SIZE = 256 << 20
IN_MEMORY = "/dev/shm"  # tests of files and folders take a tenth of the time here
STAGES = (0.05, 0.5, float("inf"))  # seconds: quick tests run first, since most changes fail them


class Trial:
    """A test executable and its environment. Its tests are divided into stages by duration."""

    def __init__(self, program, environment):
        self.program = program
        self.environment = {**os.environ, **environment}
        started = time.monotonic()
        with tempfile.NamedTemporaryFile("r", suffix=".json") as report:
            if not self.passes(0, ["*"], 600, f"--gtest_output=json:{report.name}"):
                raise SystemExit(f"mutate: {program.name} fails without any change; run\n"
                                 f"  {program}")
            suites = json.load(report)["testsuites"]
        overhead = time.monotonic() - started - sum(float(each["time"][:-1]) for each in suites)
        times = {f"{suite['name']}.{test['name']}": float(test["time"][:-1])
                 for suite in suites for test in suite["testsuite"]}
        self.stages = []  # the tests of each stage and their duration
        for least, most in zip((-1.0, *STAGES), STAGES):
            tests = [name for name, seconds in times.items() if least < seconds <= most]
            if tests:
                self.stages.append((tests, overhead + sum(times[each] for each in tests)))

    def finds(self, number):
        """Returns whether a test fails, crashes or hangs with the change of the given number."""
        return not all(self.passes(number, tests, seconds) for tests, seconds in self.stages)

    def passes(self, number, tests, seconds, *options):
        processor_time = 2 + round(3 * seconds)  # independent of the load of the machine
        with tempfile.TemporaryDirectory(
                prefix="mutate-", dir=IN_MEMORY if os.path.isdir(IN_MEMORY) else None,
                ignore_cleanup_errors=True) as folder:
            environment = {**self.environment, "LUMOWATT_MUTANT": str(number), "TMPDIR": folder,
                           "GTEST_FILTER": ":".join(tests)}
            with subprocess.Popen(
                    ["setpriv", "--pdeathsig", "KILL",
                     "prlimit", f"--as={MEMORY}", f"--fsize={FILE_SIZE}", "--core=0",
                     f"--cpu={processor_time}",
                     self.program, "--gtest_fail_fast", "--gtest_brief=1", *options],
                    cwd=folder, env=environment, start_new_session=True,
                    stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                    stderr=subprocess.DEVNULL) as process:
                try:
                    return process.wait(10 + 5 * seconds) == 0
                except subprocess.TimeoutExpired:
                    return False
                finally:
                    end_processes(process.pid, f"TMPDIR={folder}")


def end_processes(group, mark):
    """Kills a process group, and all processes that have the mark in their environment."""
    try:
        os.killpg(group, signal.SIGKILL)
    except ProcessLookupError:
        pass
    for file in pathlib.Path("/proc").glob("[0-9]*/environ"):
        try:
            if mark.encode() in file.read_bytes().split(b"\0"):
                os.kill(int(file.parent.name), signal.SIGKILL)
        except OSError:
            pass  # the process has exited or belongs to another user
