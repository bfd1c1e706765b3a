#!/usr/bin/env python3
"""Puts one small fault at a time into a copy of the tree and sees whether the native tests notice.

    mutate.py [FOLDER ...] [--seed N] [--count N] [--only FILE[:LINE]] [--matrix] [--list]

FOLDER is core, web, report, file, program, platform or cli (all of them without one). So many faults are
drawn at random from each; the same seed draws the same ones. Each is built and tested
in a copy below build/mutate/, one copy a processor. What the tests do not notice is printed as soon
as it is known, and at the end the net share that they do: known equivalents
(scripts/mutants_known.txt) do not count.

--matrix also prints, for each fault that was noticed, every test that noticed it.
--list prints the faults that would be tried, and tries none.
"""

import argparse
import json
import os
import pathlib
import queue
import random
import re
import resource
import shutil
import signal
import subprocess
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build" / "mutate"
KNOWN_LIST = ROOT / "scripts" / "mutants_known.txt"
FOLDERS = ["core", "web", "report", "file", "program", "platform", "cli"]
LEFT_OUT = {"platform/windows", "platform/handheld"}

# What is built and run one after the other, until something fails: (program, tests, folders whose
# faults it may notice). Tests that take seconds come last.
SLOW = "*.TwoWriters*:*.WaitsForAnother*:*.NewDoesNotWriteOver*"
PROGRAMS = [("tests/engine/engine_tests", "*", ["core", "web", "report", "file", "platform"]),
            ("tests/cli/qvx_tests", "-" + SLOW, FOLDERS),
            ("tests/cli/qvx_tests", SLOW, ["platform", "cli"])]

# A fault may make a program hang, or take all there is; more than this none needs.
SECONDS = 20          # beyond four times what it takes without a fault
MEMORY = 4_000_000_000
FILE_SIZE = 200_000_000

# What a maintainer's slip looks like: (name, pattern, replacements).
SLIPS = [
    ("comparison", r"(?<![<>=!-])==(?!=)", ["!="]),
    ("comparison", r"!=", ["=="]),
    ("comparison", r" < ", [" <= "]),
    ("comparison", r" > ", [" >= "]),
    ("comparison", r" <= ", [" < "]),
    ("comparison", r" >= ", [" > "]),
    ("off by one", r" \+ 1\b", ["", " + 2"]),
    ("off by one", r" - 1\b", ["", " - 2"]),
    ("and, or", r" && ", [" || "]),
    ("and, or", r" \|\| ", [" && "]),
    ("negation", r"(?<=[( ])!(?=[\w(])", [""]),
    ("constant", r"\btrue\b", ["false"]),
    ("constant", r"\bfalse\b", ["true"]),
    ("constant", r"(?<![\w.'x])([0-9]+)(?![\w.'])", [None]),  # one more
]

# Shapes in which one comparison is as good as the other: a smaller or larger one, a difference that
# is not below zero, a value without its sign.
OPERAND = r"([\w.\->\[\]]+(?:\([\w, ]*\))?(?: [-+] 1)?)"
EITHER = [OPERAND + r" (?:[<>]=?) " + OPERAND + r" \? (?:\1 : \2|\2 : \1|\1 - \2 : 0|\2 - \1 : 0)\b",
          OPERAND + r" (?:[<>]=?) 0 \? (?:-\1 : \1|0 : \1)"]
# Neither is run by anything that is tested: prefetching, and what ends a program without a view that
# does what only a window does.
NO_CODE = ("#", "static_assert", "__builtin_prefetch", "not_without_view")

# An array one larger than it need be has a byte that nobody uses.
ARRAY = re.compile(r"^\s+(?:\w+ )*\w+\[[^\]]*\](?: = \{0\})?;")
LARGER = (" + 2", None)

# A statement of one line that does something: a call, an assignment, a step.
STATEMENT = re.compile(r"^\s+(?!return|break|continue|case|default|using|else|if|for|while|const|"
                       r"static|goto|delete|throw)"
                       r"(?:\+\+|--)?[A-Za-z_*][\w.\->\[\]():]*"
                       r"(?:\(.*\)|\s*(?:[-+|&^*/]|<<|>>)?=\s.*|)\s*;\s*(?://.*)?$")
DECLARATION = re.compile(r"^\s+[\w:<>,]+(?:\s*[*&]+\s*|\s+)[A-Za-z_]\w*(?:\[.*\])?\s*(?:=.*|\(.*\))?;")


class Fault:
    """One line of one file, as it is and as it would be."""

    def __init__(self, path, line, name, before, after):
        self.path, self.line, self.name = path, line, name
        self.before, self.after = before, after

    def key(self):
        return f"{self.path} | {self.before.strip()} | {self.after.strip()}"

    def folder(self):
        return self.path.split("/", 1)[0]

    def __str__(self):
        return (f"{self.path}:{self.line}: {self.name}\n    - {self.before.strip()}\n"
                f"    + {self.after.strip() or ';'}")


def code_of(line):
    """The line with what stands in quotes, and behind //, blanked, so that nothing is found there."""
    line = re.sub(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])*\'', lambda m: " " * len(m[0]), line)
    return re.sub(r"//.*", lambda m: " " * len(m[0]), line)


def replaced(line, start, end, text):
    if text is None:
        text = str(int(line[start:end]) + 1)
    return line[:start] + text + line[end:]


def faults_of_line(path, number, line):
    code = code_of(line)
    if not code.strip() or code.lstrip().startswith(NO_CODE):
        return
    same = [match.span() for shape in EITHER for match in re.finditer(shape, code)]
    for name, pattern, texts in SLIPS:
        for match in re.finditer(pattern, code):
            if name == "comparison" and any(a <= match.start() < b for a, b in same):
                continue
            for text in texts:
                if text in LARGER and ARRAY.match(code):
                    continue
                yield Fault(path, number, name, line, replaced(line, *match.span(), text))
    if STATEMENT.match(code) and not DECLARATION.match(code):
        indent = len(line) - len(line.lstrip())
        yield Fault(path, number, "dropped statement", line, " " * indent + ";")


def faults_of(folder):
    for path in sorted((ROOT / folder).rglob("*.cpp")):
        name = path.relative_to(ROOT).as_posix()
        if any(name.startswith(left_out) for left_out in LEFT_OUT):
            continue
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            yield from faults_of_line(name, number, line)


def draw(folders, seed, count, only):
    """At most so many faults of each folder, whose place begins like this; in no order."""
    random.seed(seed)
    drawn = []
    for folder in folders:
        faults = [one for one in faults_of(folder) if f"{one.path}:{one.line}".startswith(only)]
        drawn += random.sample(faults, min(count, len(faults)))
    random.shuffle(drawn)
    return drawn


def read_known():
    """{key: reason}: faults that change nothing that a test could see."""
    known = {}
    for line in KNOWN_LIST.read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            key, reason = line.rsplit(" | ", 1)
            known[key] = reason
    return known


KNOWN = read_known()


class Copy:
    """A copy of the tree with a build of its own."""

    def __init__(self, number):
        self.tree = WORK / str(number)
        self.build = self.tree / "build" / "mutate"
        self.result = self.tree / "build" / "result.json"
        self.seconds = {}  # that tests may take

    def command(self, *arguments, seconds=900):
        """True, False, or None when it took too long; what it started ends with it."""
        with subprocess.Popen(arguments, cwd=self.tree, start_new_session=True,
                              preexec_fn=limit_means, stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as process:
            try:
                return process.wait(timeout=seconds) == 0
            except subprocess.TimeoutExpired:
                return None
            finally:
                end_group(process.pid)

    def set_up(self):
        """Whether it builds and passes as it is."""
        names = subprocess.run(["git", "ls-files", "-z", "--cached", "--others",
                                "--exclude-standard"], cwd=ROOT, capture_output=True, text=True,
                               check=True).stdout.split("\0")
        for name in filter(None, names):
            source, copy = ROOT / name, self.tree / name
            if not source.is_file():
                copy.unlink(missing_ok=True)
            elif not copy.exists() or copy.read_bytes() != source.read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copyfile(source, copy)  # as of now, so that it is built again
        return (self.command("cmake", "-S", ".", "-B", str(self.build), "-G", "Ninja",
                             "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS=-O1 -w") and
                self.passes())

    def passes(self):
        for program, tests, _ in PROGRAMS:
            if not self.make(program):
                return False
            start = time.monotonic()
            if tests != SLOW and not self.run_tests(program, tests, False):
                return False
            self.seconds[tests] = SECONDS + 4 * (time.monotonic() - start)
        self.seconds[SLOW] = 10 * SECONDS
        return True

    def make(self, program):
        return self.command("cmake", "--build", str(self.build), "--parallel", "1", "--target",
                            program.rsplit("/", 1)[1])

    def run_tests(self, program, tests, whole):
        arguments = [str(self.build / program), f"--gtest_output=json:{self.result}",
                     f"--gtest_filter={tests}"]
        return self.command(*arguments, *([] if whole else ["--gtest_fail_fast"]),
                            seconds=self.seconds.get(tests, 600))

    def failures(self, fault, whole):
        """The tests that fail, all of them or the first; None when it does not compile."""
        failed = []
        for program, tests, folders in PROGRAMS:
            if fault.folder() not in folders:
                continue
            if not self.make(program):
                return None
            self.result.unlink(missing_ok=True)
            passed = self.run_tests(program, tests, whole)
            if not passed:
                failed += (failed_tests(self.result) or [f"({program} crashes)"]
                           if passed is False else [f"({program} hangs)"])
                if not whole:
                    break
        return failed

    def try_fault(self, fault, whole):
        """failures() with the fault in."""
        path = self.tree / fault.path
        text = path.read_text(encoding="utf-8")
        lines = text.splitlines(keepends=True)
        lines[fault.line - 1] = fault.after + "\n"
        path.write_text("".join(lines), encoding="utf-8")
        try:
            return self.failures(fault, whole)
        finally:
            path.write_text(text, encoding="utf-8")


def limit_means():
    for kind, limit in ((resource.RLIMIT_AS, MEMORY), (resource.RLIMIT_FSIZE, FILE_SIZE),
                        (resource.RLIMIT_CORE, 0)):
        resource.setrlimit(kind, (limit, resource.getrlimit(kind)[1]))


def end_group(group):
    try:
        os.killpg(group, signal.SIGKILL)
    except ProcessLookupError:
        pass


def failed_tests(result):
    if not result.exists():
        return []
    suites = json.loads(result.read_text(encoding="utf-8"))["testsuites"]
    return [f"{suite['name']}.{test['name']}" for suite in suites for test in suite["testsuite"]
            if test.get("failures")]


def work(copy, waiting, outcomes, whole):
    if not copy.set_up():
        print(f"{copy.tree}: does not build, or fails without a fault", flush=True)
        return
    while True:
        try:
            fault = waiting.get_nowait()
        except queue.Empty:
            return
        outcomes.append((fault, copy.try_fault(fault, whole)))
        tell(*outcomes[-1], whole)


def tell(fault, failed, whole):
    with (WORK / "outcomes.txt").open("a", encoding="utf-8") as log:
        log.write(f"{fault.path}:{fault.line} | {fault.before.strip()} | {fault.after.strip()} | "
                  f"{failed}\n")
    if failed is not None and not failed and fault.key() not in KNOWN:
        print(f"survives: {fault}", flush=True)
    elif failed and whole:
        print(f"{fault}\n    noticed by {', '.join(failed)}", flush=True)


def run_all(faults, whole, jobs):
    copies = [Copy(number) for number in range(jobs)]
    waiting, outcomes = queue.Queue(), []
    for fault in faults:
        waiting.put(fault)
    threads = [threading.Thread(target=work, args=(copy, waiting, outcomes, whole))
               for copy in copies]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    return outcomes


def report(outcomes):
    table = {}
    for fault, failed in outcomes:
        if failed is None:
            continue
        row = table.setdefault(fault.folder(), [0, 0, 0])
        row[0 if failed else 1 if fault.key() in KNOWN else 2] += 1
    for folder, (noticed, equal, left) in sorted(table.items()):
        share = 100 * noticed / max(noticed + left, 1)
        print(f"{folder}: {noticed} noticed, {left} survive, {equal} change nothing: {share:.0f} %")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folders", nargs="*")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=35)
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 1)
    parser.add_argument("--only", default="", help="faults whose file and line begin like this")
    parser.add_argument("--matrix", action="store_true")
    parser.add_argument("--list", action="store_true")
    options = parser.parse_args()
    drawn = draw(options.folders or FOLDERS, options.seed, options.count, options.only)
    if options.list:
        for fault in drawn:
            print(fault)
        return
    report(run_all(drawn, options.matrix, options.jobs))


main()
