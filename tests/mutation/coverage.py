"""Which lines of the plug-in each test reaches, and how long it takes.

The image is built with a call at the beginning of each basic block; a shared file keeps which of them have returned.
Debugging data says which lines stand in which block.
"""

import bisect
import json
import re
import statistics

import suite
from tree import Trouble, output_of

# Of the stored map.
FORMAT = 3
TRACE = "__sanitizer_cov_trace_pc"


class Map:
    """Tests by place: file to line to the numbers of the tests; each test's own seconds, and those that the start of
    its program takes."""

    def __init__(self, tests, seconds, starts, lines):
        self.tests = tests
        self.seconds = seconds
        self.starts = starts
        self.lines = lines

    def reaching(self, point):
        """The numbers of the tests that reach the statement of the point; without any code there, its file."""
        known = self.lines.get(point.file, {})
        within = [line for line in range(point.first, point.last + 1) if line in known]
        found = set()
        for line in within or known:
            found.update(known[line])
        if not within and not known:
            found.update(range(len(self.tests)))
        return found, bool(within)

    def time_together(self, numbers):
        """How long tests of one program take in one process."""
        start = max((self.starts[self.tests[number].program] for number in numbers), default=0)
        return start + sum(self.seconds[number] for number in numbers)

    def store(self, path):
        path.write_text(json.dumps({
            "tests": [[test.program, test.name] for test in self.tests], "seconds": self.seconds,
            "starts": self.starts, "lines": {file: {str(line): sorted(numbers) for line, numbers in lines.items()}
                      for file, lines in self.lines.items()}}))

    @staticmethod
    def load(path):
        stored = json.loads(path.read_text())
        return Map([suite.Test(*each) for each in stored["tests"]], stored["seconds"], stored["starts"],
                   {file: {int(line): set(numbers) for line, numbers in lines.items()}
                    for file, lines in stored["lines"].items()})


def build_image(tree, folder):
    """The watched image."""
    folder.mkdir(parents=True, exist_ok=True)
    objects = {}
    for number, (source, command) in enumerate(sorted(tree.image_commands.items())):
        result = folder / f"{number}.o"
        compiled = tree.compile(command, result, drop=("-O1", "-g1"), extra=("-O0", "-g", "-fsanitize-coverage=trace-pc"))
        if compiled.returncode:
            raise Trouble(f"{source} does not compile for coverage:\n{compiled.stderr}")
        objects[tree.object_of(command)] = result
    runtime = folder / "runtime.o"
    own = tree.root / "tests/mutation/coverage_runtime.cpp"
    compiled = output_of(["c++", "-std=c++20", "-O2", "-fPIC", "-fno-exceptions", "-fno-rtti", "-c", own, "-o", runtime])
    if compiled.returncode:
        raise Trouble(compiled.stderr)
    image = folder / "QuorvelRR.so"
    linked = tree.link_image(objects, image, extra=[str(runtime)])
    if linked.returncode:
        raise Trouble(linked.stderr)
    return image


class Blocks:
    """The basic blocks of the watched image: where each reports from, and its lines."""

    def __init__(self, tree, image):
        self.tree = tree
        returns, functions = self._calls(image)
        if not returns:
            raise Trouble(f"{image} reports no basic block: the compiler has left the calls out.")
        self.lines = {address: set() for address in returns}
        for file, line, address in self._rows(image):
            first = bisect.bisect_right(functions, address) - 1
            if first < 0:
                continue
            end = functions[first + 1] if first + 1 < len(functions) else 1 << 62
            # The block whose report stands last before the address; what comes before the first belongs to it.
            at = bisect.bisect_right(returns, address) - 1
            if at < 0 or returns[at] < functions[first]:
                at += 1
            if at < len(returns) and functions[first] <= returns[at] < end:
                self.lines[returns[at]].add((file, line))
        if not any(self.lines.values()):
            raise Trouble(f"{image} has no line of the plug-in: objdump could not read its debugging data.")

    def _calls(self, image):
        returns, functions = [], []
        after_call = False
        for line in output_of(["objdump", "-d", "--no-show-raw-insn", image]).stdout.split("\n"):
            if match := re.match(r"^([0-9a-f]+) <.*>:$", line):
                functions.append(int(match[1], 16))
                after_call = False
            elif match := re.match(r"^\s*([0-9a-f]+):\s+(\S+)(.*)$", line):
                if after_call:
                    returns.append(int(match[1], 16))
                after_call = match[2].startswith("call") and TRACE in match[3]
        return sorted(returns), sorted(functions)

    def _rows(self, image):
        files = {}
        for name in sorted({str(path.relative_to(self.tree.root)) for path in (self.tree.root / "plugin").rglob("*")
                            if path.suffix in (".h", ".cpp")}):
            files[name] = name
        current = None
        for line in output_of(["objdump", "--dwarf=decodedline", image]).stdout.split("\n"):
            if line.endswith((":", ":[++]")):
                path = line.rsplit(":", 1)[0]
                at = path.rfind("/plugin/")
                current = files.get(path[at + 1 :]) if at >= 0 else None
            elif current and (match := re.match(r"^\S+\s+(\d+)\s+0x([0-9a-f]+)", line)):
                yield current, int(match[1]), int(match[2], 16)


def measure(tree, folder, programs, say):
    image = build_image(tree, folder)
    blocks = Blocks(tree, image)
    trace = folder / "trace.bin"
    tests, seconds, starts, lines = [], [], {}, {}
    for program in programs:
        beginnings = []
        for test in suite.tests_of(tree.build, program):
            trace.unlink(missing_ok=True)
            settings = suite.environment(image, QUORVEL_COVERAGE_FILE=str(trace))
            outcome = suite.run(tree.build / "tests" / program, [test.name], 300, settings)
            if not outcome.passed:
                say(f"{program} {test.name} {outcome.reason} without any change, and is left out")
                continue
            number = len(tests)
            tests.append(test)
            seconds.append(outcome.own)
            beginnings.append(outcome.seconds - outcome.own)
            for file, line in lines_of(blocks, trace):
                lines.setdefault(file, {}).setdefault(line, set()).add(number)
        starts[program] = round(statistics.median(beginnings), 3) if beginnings else 0
        say(f"{program}: {sum(test.program == program for test in tests)} tests")
    return Map(tests, seconds, starts, lines)


def lines_of(blocks, trace):
    """The lines that one run has reached."""
    if not trace.exists():
        return set()
    content = trace.read_bytes()
    reached = set()
    at = content.find(b"\1")
    while at >= 0:
        reached |= blocks.lines.get(at, set())
        at = content.find(b"\1", at + 1)
    return reached
