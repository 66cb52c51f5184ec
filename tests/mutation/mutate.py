"""Changes the plug-in's source in one place at a time, builds it, and sees whether a test notices.

docs/MUTATION.md says what is changed, how the score is made, and what the survivors are.
"""

import argparse
import collections
import concurrent.futures
import dataclasses
import hashlib
import json
import os
import pathlib
import random
import shutil
import sys
import threading
import time

import coverage
import points
import suite
from tree import Tree, Trouble

ROOT = pathlib.Path(__file__).resolve().parents[2]
# What tests and images are made from.
SOURCES = (".h", ".cpp", ".strings")
# So many sources that a header reaches are compiled as one.
MANY = 4
EXPLANATIONS = pathlib.Path(__file__).with_name("survivors.txt")


def say(line):
    print(line, flush=True)


def all_points(tree):
    """Every point of every file of the plug-in, in the order of files and places."""
    found = {}
    for source, command in sorted(tree.image_commands.items()):
        own = tree.file_of(source)
        files = {own} | {file for file in tree.dependencies.get(tree.object_of(command), ())
                         if file.startswith("plugin/") and file not in found}
        unit = points.parse(source, tree.parse_arguments(command))
        for file in files:
            found[file] = points.points_of(unit, tree.root / file, file)
    return [point for file in sorted(found) for point in found[file]]


def state_of(root):
    """What a result depends on: the sources and the tests."""
    digest = hashlib.sha256()
    for folder in ("plugin", "platform", "objc", "desktop", "tests"):
        for path in sorted((root / folder).rglob("*")):
            file = str(path.relative_to(root))
            if path.is_file() and path.suffix in SOURCES and not file.startswith("tests/mutation/"):
                digest.update(file.encode() + b"\0" + path.read_bytes())
    return digest.hexdigest()[:16]


class Explanations:
    """Why survivors are no gap in the tests: blocks of FILE, CODE, OLD -> NEW, and the reason below."""

    def __init__(self, path):
        self.known = {}
        if path.exists():
            self._read(path)

    def _read(self, path):
        for number, block in enumerate(path.read_text().split("\n\n")):
            lines = [line for line in block.split("\n") if line and not line.startswith("#")]
            if not lines:
                continue
            if len(lines) < 4 or " -> " not in lines[2]:
                raise Trouble(f"{path}, block {number + 1}: write the file, the line of code, OLD -> NEW, and the reason, "
                              f"a line each.")
            self.known[(lines[0], lines[1], lines[2])] = " ".join(lines[3:])

    @staticmethod
    def key(point):
        return point.file, point.code, f"{one_line(point.old)} -> {one_line(point.new)}"

    def of(self, point):
        return self.known.get(self.key(point))


def one_line(text):
    return " ".join(text.split()) or "nothing"


def bound_of(seconds):
    """After how long tests that take so many seconds are taken to go on without end."""
    return 10 + 5 * seconds


class Worker:
    """One place to build and run in."""

    def __init__(self, tree, map_, folder, limit):
        self.tree = tree
        self.map = map_
        self.folder = folder
        self.limit = limit
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)

    def examine(self, point):
        """What becomes of one change: a dictionary with `verdict` and more."""
        begun = time.monotonic()
        result = self._examine(point)
        result["seconds"] = round(time.monotonic() - begun, 1)
        return result

    def _examine(self, point):
        overlay = self.folder / "overlay"
        shutil.rmtree(overlay, ignore_errors=True)
        changed = overlay / point.file
        changed.parent.mkdir(parents=True)
        changed.write_bytes(point.apply((self.tree.root / point.file).read_bytes()))
        image_sources, rule_sources = self.tree.users_of(point.file)

        objects, trouble, is_same = self._compile(self.tree.image_commands, image_sources, overlay)
        if trouble:
            return {"verdict": "invalid", "by": trouble}
        if rule_sources:
            rules, trouble, same_rules = self._compile(self.tree.rule_commands, rule_sources, overlay)
            if trouble:
                return {"verdict": "invalid", "by": trouble}
            if is_same and same_rules:
                return {"verdict": "same"}
            if killer := self._run_rules(rules):
                return {"verdict": "killed", "by": killer}
        if is_same:
            return {"verdict": "survived" if rule_sources else "same"}

        image = self.folder / "QuorvelRR.so"
        linked = self.tree.link_image(objects, image)
        if linked.returncode:
            return {"verdict": "invalid", "by": linked.stderr.strip().split("\n")[0][:200]}
        numbers, is_exact = self.map.reaching(point)
        killer = self._run_image(image, numbers)
        if killer:
            return {"verdict": "killed", "by": killer}
        return {"verdict": "survived", "tests": len(numbers), "reached": bool(numbers) and is_exact}

    def _compile(self, commands, sources, overlay):
        """The objects, what the compiler said against it, and whether the machine code is as before."""
        if len(sources) >= MANY and commands is self.tree.image_commands:
            whole = self._compile_as_one(sources, overlay)
            if whole is not None:
                return whole
        objects = {}
        is_same = True
        for number, source in enumerate(sources):
            command = commands[source]
            result = self.folder / f"{number}-{source.name}.o"
            compiled = self.tree.compile(command, result, overlay, drop=("-g1",), extra=("-g0",))
            if compiled.returncode:
                errors = [line for line in compiled.stderr.split("\n") if "error" in line]
                return {}, (errors or ["does not compile"])[0][-200:], False
            objects[self.tree.object_of(command)] = result
            is_same = is_same and result.read_bytes() == self._unchanged(command, source).read_bytes()
        return objects, None, is_same

    def _compile_as_one(self, sources, overlay):
        """The same of many sources, read as one: their headers are read once. None where they cannot be."""
        unchanged = self._unchanged_whole(tuple(sources))
        if unchanged is None:
            return None
        result = self.folder / "whole.o"
        compiled = self._compile_whole(sources, self.folder, result, overlay)
        if compiled.returncode:
            errors = [line for line in compiled.stderr.split("\n") if "error" in line]
            return {}, (errors or ["does not compile"])[0][-200:], False
        first, *others = [self.tree.object_of(self.tree.image_commands[source]) for source in sources]
        objects = {first: result, **dict.fromkeys(others)}
        return objects, None, result.read_bytes() == unchanged.read_bytes()

    def _compile_whole(self, sources, folder, result, overlay=None):
        whole = folder / "whole" / "whole.cpp"
        whole.parent.mkdir(exist_ok=True)
        whole.write_text("".join(f'#include "{self.tree.file_of(source)}"\n' for source in sources))
        command = list(self.tree.image_commands[sources[0]])
        command[command.index("-c") + 1] = str(whole)
        return self.tree.compile(command, result, overlay, drop=("-g1",), extra=("-g0",))

    def _unchanged_whole(self, sources):
        with Worker._lock:
            if sources not in Worker._unchanged_objects:
                folder = self.folder.parent / "unchanged" / f"whole-{len(Worker._unchanged_objects)}"
                folder.mkdir(parents=True, exist_ok=True)
                compiled = self._compile_whole(sources, folder, folder / "whole.o")
                Worker._unchanged_objects[sources] = None if compiled.returncode else folder / "whole.o"
            return Worker._unchanged_objects[sources]

    _unchanged_objects = {}
    _lock = threading.Lock()

    def _unchanged(self, command, source):
        """The object of the source as it stands, compiled in the same way."""
        with Worker._lock:
            if source not in Worker._unchanged_objects:
                folder = self.folder.parent / "unchanged"
                folder.mkdir(exist_ok=True)
                overlay = folder / "overlay"
                copy = overlay / self.tree.file_of(source)
                copy.parent.mkdir(parents=True, exist_ok=True)
                copy.write_bytes(source.read_bytes())
                result = folder / f"{len(Worker._unchanged_objects)}-{source.name}.o"
                compiled = self.tree.compile(command, result, overlay, drop=("-g1",), extra=("-g0",))
                if compiled.returncode:
                    raise Trouble(f"{source} does not compile as it stands:\n{compiled.stderr}")
                Worker._unchanged_objects[source] = result
            return Worker._unchanged_objects[source]

    def _run_rules(self, objects):
        program = self.folder / "rules_tests"
        linked = self.tree.link_rules(objects, program)
        if linked.returncode:
            raise Trouble(f"the rule tests cannot be linked:\n{linked.stderr}")
        outcome = suite.run(program, None, 60, suite.environment())
        return None if outcome.passed else f"rules_tests {(outcome.failed or ['?'])[0]} {outcome.reason}"

    def _run_image(self, image, numbers):
        """Which test notices, or None. Programs run in the order of the time they take for these tests."""
        by_program = collections.defaultdict(list)
        for number in numbers:
            if self.map.seconds[number] <= self.limit:
                by_program[self.map.tests[number].program].append(number)
        for program in sorted(by_program, key=lambda each: self.map.time_together(by_program[each])):
            chosen = sorted(by_program[program], key=lambda number: self.map.seconds[number])
            if killer := self._run_program(program, image, chosen):
                return killer
        return None

    def _run_program(self, program, image, numbers):
        path = self.tree.build / "tests" / program
        settings = suite.environment(image)
        names = [self.map.tests[number].name for number in numbers]
        while names:
            outcome = suite.run(path, names, bound_of(self.map.time_together(numbers)), settings)
            if outcome.passed:
                return None
            if not outcome.failed:
                return f"{program} {outcome.reason}"
            # As ctest runs it: a test that fails among others alone says something about the others.
            for name in outcome.failed:
                alone = bound_of(sum(self.map.time_together([number]) for number in numbers
                                     if self.map.tests[number].name == name))
                if not suite.run(path, [name], alone, settings).passed:
                    return f"{program} {name} {outcome.reason}"
            names = [name for name in names if name not in outcome.failed]
        return None


class Results:
    """What is known of each point, a line each, so that a run that was stopped goes on."""

    def __init__(self, path, state, keep):
        self.path = path
        self.known = {}
        if path.exists():
            for line in path.read_text().split("\n"):
                if not line:
                    continue
                entry = json.loads(line)
                # What a test has noticed once stays noticed while the line of code is the same.
                if entry["state"] == state or (keep and entry["verdict"] in ("killed", "invalid", "same")):
                    self.known[entry["id"]] = entry
        self.state = state
        self._lock = threading.Lock()

    def add(self, point, result):
        entry = {"id": point.identity, "state": self.state, "file": point.file, "line": point.line, **result}
        with self._lock:
            self.known[point.identity] = entry
            with self.path.open("a") as stream:
                stream.write(json.dumps(entry) + "\n")


def describe(point):
    return f"{point.file}:{point.line}: {point.operator}: {one_line(point.old)} -> {one_line(point.new)}"


def report(chosen, results, explanations, total):
    counted = collections.Counter()
    survivors = []
    by_operator = collections.defaultdict(collections.Counter)
    for point in chosen:
        entry = results.known.get(point.identity)
        verdict = entry["verdict"] if entry else "open"
        counted[verdict] += 1
        by_operator[point.operator][verdict] += 1
        if verdict == "survived":
            survivors.append((point, entry))
    killed, survived = counted["killed"], counted["survived"]
    unexplained = [(point, entry) for point, entry in survivors if not explanations.of(point)]
    say("")
    for point, entry in survivors:
        reason = explanations.of(point)
        reached = "" if entry.get("reached", True) else " (no test reaches it)"
        say(f"survived: {describe(point)}{reached}" + (f"\n    {reason}" if reason else f"\n    {point.code}"))
    say("")
    say(f"{len(chosen)} of {total} changes: {killed} killed, {survived} survived ({len(unexplained)} without an "
        f"explanation), {counted['same']} the same machine code, {counted['invalid']} invalid, {counted['open']} open")
    for operator, verdicts in sorted(by_operator.items()):
        whole = verdicts["killed"] + verdicts["survived"]
        if whole:
            say(f"  {operator:12} {verdicts['killed']:5} of {whole:5}  {100 * verdicts['killed'] / whole:5.1f} %")
    if killed + survived:
        say(f"score: {100 * killed / (killed + survived):.1f} %")
    return unexplained


def parse_options(arguments):
    parser = argparse.ArgumentParser(prog="scripts/mutate", description=__doc__.split("\n")[0])
    parser.add_argument("--build", default=ROOT / "build/dev", type=pathlib.Path, help="the build with the tests")
    parser.add_argument("--sample", type=int, metavar="N", help="N changes at random instead of all")
    parser.add_argument("--seed", type=int, default=1, metavar="S", help="which ones at random (default: 1)")
    parser.add_argument("--file", action="append", default=[], metavar="PART", help="files whose path holds PART")
    parser.add_argument("--operator", action="append", default=[], help="changes of this kind")
    parser.add_argument("--line", type=int, action="append", default=[], metavar="N", help="changes in this line")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), metavar="N", help="how many at a time")
    parser.add_argument("--longest", type=float, default=20, metavar="SECONDS",
                        help="tests that take longer are left out (default: 20)")
    parser.add_argument("--fresh", action="store_true", help="forget earlier results")
    parser.add_argument("--keep", action="store_true",
                        help="keep what was killed before sources or tests changed; try the rest again")
    parser.add_argument("--list", action="store_true", help="print the changes and leave")
    parser.add_argument("--report", action="store_true", help="print what is known and leave")
    return parser.parse_args(arguments)


def choose(found, options):
    chosen = [point for point in found
              if (not options.file or any(part in point.file for part in options.file))
              and (not options.operator or point.operator in options.operator)
              and (not options.line or point.line in options.line)]
    if options.sample is not None and options.sample < len(chosen):
        picked = set(random.Random(options.seed).sample(range(len(chosen)), options.sample))
        chosen = [point for number, point in enumerate(chosen) if number in picked]
    return chosen


def load_map(tree, folder, state):
    """The coverage of this state of the tree, measured where it is not known yet."""
    stored = folder / f"coverage-{coverage.FORMAT}-{state}.json"
    if not stored.exists():
        say("measuring which tests reach which lines")
        measured = coverage.measure(tree, folder / "coverage", suite.PROGRAMS, say)
        for old in folder.glob("coverage-*.json"):
            old.unlink()
        measured.store(stored)
    return coverage.Map.load(stored)


def run(options):
    tree = Tree(ROOT, options.build)
    explanations = Explanations(EXPLANATIONS)
    found = all_points(tree)
    chosen = choose(found, options)
    if options.list:
        for point in chosen:
            say(f"{point.identity} {describe(point)}")
        return 0
    folder = options.build.parent / "mutation"
    folder.mkdir(parents=True, exist_ok=True)
    state = state_of(ROOT)
    stored = folder / "results.jsonl"
    if options.fresh:
        stored.unlink(missing_ok=True)
    results = Results(stored, state, options.keep)
    todo = [point for point in chosen if point.identity not in results.known]
    if not options.report and todo:
        # Those of one file apart from each other: the slow ones spread over the run.
        random.Random(options.seed).shuffle(todo)
        examine(tree, load_map(tree, folder, state), todo, results, options, folder)
    unexplained = report(chosen, results, explanations, len(found))
    return 1 if unexplained else 0


def examine(tree, map_, todo, results, options, folder):
    begun = time.monotonic()
    done = 0
    idle = [Worker(tree, map_, folder / f"worker-{number}", options.longest) for number in range(options.jobs)]
    lock = threading.Lock()

    def one(point):
        nonlocal done
        with lock:
            worker = idle.pop()
        try:
            result = worker.examine(point)
        finally:
            with lock:
                idle.append(worker)
        results.add(point, result)
        with lock:
            done += 1
            left = (time.monotonic() - begun) / done * (len(todo) - done)
            say(f"{done}/{len(todo)} {result['verdict']} {describe(point)}"
                + (f" by {result['by']}" if "by" in result else "") + f" [{result['seconds']} s, {left / 60:.0f} min left]")

    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for finished in [pool.submit(one, point) for point in todo]:
            finished.result()


def main(arguments):
    try:
        return run(parse_options(arguments))
    except (Trouble, ValueError) as trouble:
        print(trouble, file=sys.stderr)
        return 2
    except KeyboardInterrupt:
        print("Stopped. The same command goes on from here.", file=sys.stderr)
        return 130


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
