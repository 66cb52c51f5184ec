"""The tree as it is built: how each source of the plug-in is compiled, and how images and rule tests are linked."""

import json
import pathlib
import re
import shlex
import subprocess


class Trouble(Exception):
    """What keeps the run from going on, with what to do about it."""


def output_of(command, **options):
    return subprocess.run(command, capture_output=True, text=True, errors="replace", **options)


class Tree:
    def __init__(self, root, build):
        self.root = pathlib.Path(root)
        self.build = pathlib.Path(build)
        commands = self.build / "compile_commands.json"
        if not commands.exists():
            raise Trouble(f"{commands} is not there. Build the tests first: ./test, or cmake --preset dev.")
        self.image_commands = {}
        self.rule_commands = {}
        for entry in json.loads(commands.read_text()):
            source = pathlib.Path(entry["file"])
            if "/QuorvelRR.dir/" in entry["command"]:
                self.image_commands[source] = shlex.split(entry["command"])
            elif "/rules_tests.dir/" in entry["command"]:
                self.rule_commands[source] = shlex.split(entry["command"])
        self.dependencies = self._dependencies()
        self.image_link = self._link_command("lib/QuorvelRR.so")
        self.rules_link = self._link_command("tests/rules_tests")

    def _dependencies(self):
        """Of each object of the build, the files of the tree that it was made from."""
        known = {}
        target = None
        prefix = str(self.root) + "/"
        for line in output_of(["ninja", "-C", self.build, "-t", "deps"]).stdout.split("\n"):
            if line.startswith(" "):
                name = line.strip()
                if target and name.startswith(prefix):
                    known[target].add(name[len(prefix) :])
                elif target and not name.startswith("/"):
                    path = (self.build / name).resolve()
                    if path.is_relative_to(self.root):
                        known[target].add(str(path.relative_to(self.root)))
            elif ":" in line:
                target = line.split(":")[0]
                known[target] = set()
        return known

    def _link_command(self, target):
        lines = output_of(["ninja", "-C", self.build, "-t", "commands", target]).stdout.strip().split("\n")
        if not lines or not lines[-1]:
            raise Trouble(f"The build does not know {target}. Configure it with tests: cmake --preset dev.")
        parts = [part.strip() for part in lines[-1].split("&&")]
        linking = next(part for part in parts if "-o " in part)
        return shlex.split(linking)

    def object_of(self, command):
        return command[command.index("-o") + 1]

    def file_of(self, source):
        return str(source.relative_to(self.root))

    def users_of(self, file):
        """The sources of the image, and those of the rule tests, that a change of the file reaches."""
        return tuple(
            [source for source, command in commands.items()
             if source == self.root / file or file in self.dependencies.get(self.object_of(command), ())]
            for commands in (self.image_commands, self.rule_commands))

    def parse_arguments(self, command):
        kept = []
        takes_value = False
        for word in command[1:]:
            if takes_value or word.startswith(("-I", "-D", "-std=")) or word == "-isystem":
                kept.append(word)
            takes_value = word == "-isystem"
        return kept + ["-isystem", self._runtime_headers(), "-Wno-everything"]

    def _runtime_headers(self):
        cache = (self.build / "CMakeCache.txt").read_text()
        return re.search(r"^OBJC_INCLUDE_DIR:PATH=(.*)$", cache, re.M)[1]

    def compile(self, command, result, overlay=None, extra=(), drop=()):
        """Compiles as the build does, but for warnings, debugging and the caches. Files of the overlay come first."""
        words = []
        skip = False
        for word in command:
            if skip:
                skip = False
            elif word in ("-MT", "-MF"):
                skip = True
            elif word in ("-MD", "-Werror") or word.endswith("/ccache") or word in drop:
                continue
            else:
                words.append(word)
        words[words.index("-o") + 1] = str(result)
        if overlay:
            source = words.index("-c") + 1
            path = pathlib.Path(words[source])
            if path.is_relative_to(self.root) and (overlay / path.relative_to(self.root)).exists():
                words[source] = str(overlay / path.relative_to(self.root))
            words[1:1] = ["-I" + str(overlay)]
        words += extra
        return output_of(words, cwd=self.build)

    def link_image(self, objects, result, extra=()):
        """Links the image; `objects` replaces those of the build by their names there, or leaves them out (None)."""
        words = [str(objects.get(word, word)) for word in self.image_link if word != ":" and objects.get(word, word)]
        words[words.index("-o") + 1] = str(result)
        words = [f"-Wl,-rpath,{self.build}/lib" if word.startswith("-Wl,-rpath") else word for word in words]
        return output_of(words + list(extra), cwd=self.build)

    def link_rules(self, objects, result):
        words = [str(objects.get(word, word)) for word in self.rules_link if word != ":"]
        words[words.index("-o") + 1] = str(result)
        return output_of(words, cwd=self.build)
