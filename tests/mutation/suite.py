"""The tests that the plug-in's changes are tried against, and how they are run."""

import dataclasses
import os
import re
import signal
import subprocess
import time

from tree import Trouble, output_of

# Programs that load the image, the quickest first. The rules are built into their program and stand apart.
PROGRAMS = [
    "other_process_tests",
    "messages_tests",
    "rows_messages_tests",
    "recents_messages_tests",
    "installation_tests",
    "screens_tests",
    "scenario_tests",
    "stress_tests",
]


@dataclasses.dataclass(frozen=True)
class Test:
    program: str
    name: str


@dataclasses.dataclass
class Outcome:
    passed: bool
    seconds: float
    failed: list  # names
    reason: str
    own: float = 0  # seconds of the tests themselves, without the start of their process


def environment(image=None, **more):
    settings = {**os.environ, "LC_ALL": "C.UTF-8", **more}
    settings.pop("QUORVEL_TEST_PLUGIN", None)
    if image:
        settings["QUORVEL_TEST_PLUGIN"] = str(image)
    return settings


def tests_of(build, program):
    path = build / "tests" / program
    if not path.exists():
        raise Trouble(f"{path} is not there. Build it, or name the build with --build.")
    listed = output_of([path, "--gtest_list_tests"], env=environment()).stdout
    group = ""
    for line in listed.split("\n"):
        name = line.split("#")[0].rstrip()
        if not name.startswith(" "):
            group = name
        elif group.endswith("."):
            test = (group + name.strip()).strip()
            if "DISABLED_" not in test:
                yield Test(program, test)


def run(path, names, bound, settings, stop_at_first=True):
    """Runs the named tests in one process of the program; all of them where `names` is None."""
    command = [str(path)]
    if names is not None:
        settings = {**settings, "GTEST_FILTER": ":".join(names)}
    if stop_at_first:
        command.append("--gtest_fail_fast")
    begun = time.monotonic()
    process = subprocess.Popen(command, cwd=path.parent, env=settings, stdin=subprocess.DEVNULL,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT, start_new_session=True)
    try:
        output = process.communicate(timeout=bound)[0].decode(errors="replace")
    except subprocess.TimeoutExpired:
        # A test may have started a Phone: the whole session that was begun here ends.
        os.killpg(process.pid, signal.SIGKILL)
        output = process.communicate()[0].decode(errors="replace")
        running = running_test(output)
        return Outcome(False, time.monotonic() - begun, [running] if running else [], "goes on without end")
    seconds = time.monotonic() - begun
    failed = sorted(set(re.findall(r"^\[  FAILED  \] ([\w/]+\.[\w/]+)", output, re.M)))
    if process.returncode == 0:
        own = sum(map(int, re.findall(r"^\[       OK \] .* \((\d+) ms\)$", output, re.M))) / 1000
        return Outcome(True, seconds, [], "", own)
    if not failed:
        running = running_test(output)
        end = f"ends by signal {-process.returncode}" if process.returncode < 0 else "ends early"
        return Outcome(False, seconds, [running] if running else [], end)
    return Outcome(False, seconds, failed, "fails")


def running_test(output):
    begun = re.findall(r"^\[ RUN      \] (\S+)", output, re.M)
    return begun[-1] if begun else None
