#!/usr/bin/env python3
"""mutants.py [--count N] [--seed S] PART...: changes one small thing in a part of the code, builds it and runs
that part's tests, N times over. A change that no test notices is printed: either a test is missing, or the
change means nothing, which judged.txt then says. PART is a folder of parts.txt; none stands for all."""

import argparse
import concurrent.futures
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
HERE = pathlib.Path(__file__).resolve().parent
FOLDER = ROOT / "build" / "mutants"

SWAPS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&",
         "+": "-", "-": "+", "*": "/", "/": "*", "+=": "-=", "-=": "+=",
         "true": "false", "false": "true", "min": "max", "max": "min", "front": "back", "back": "front",
         "continue": "break", "break": "continue", "any_of": "all_of", "all_of": "any_of",
         "starts_with": "ends_with", "ends_with": "starts_with"}
# The layout of the code sets blanks around every operator of two values, and around no other sign.
PATTERNS = [r"(?<= )(<=|>=|==|!=|&&|\|\||\+=|-=|[<>+\-*/])(?= )",
            r"\b(true|false|continue|break)\b",
            r"(?<=::)(min|max|any_of|all_of)(?=\()",
            r"(?<=[.>])(front|back|starts_with|ends_with)(?=\()"]
NUMBER = re.compile(r"(?<![\w.'])(\d[\d']*)(\.\d+)?(?![\w.'])")
CONDITION = re.compile(r"^(\s*(?:\} else )?if \()([^;]*)(\) \{)$")
CALL = re.compile(r"^\s+(?!return|co_|static_assert|using|precondition|throw|delete|case|typedef)[\w.:>\-]+\([^{}]*\);$")


def code_only(line):
    """The line with its texts and remarks blanked out, in the same places."""
    line = re.sub(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])\'', lambda text: '"' * len(text.group()), line)
    return re.sub(r"//.*", lambda text: '"' * len(text.group()), line)


def mutations(line):
    """All lines that differ from this one by one small change."""
    code = code_only(line)
    if code.lstrip().startswith(("#", "template", "using", "static_assert", "///")):
        return
    for pattern in PATTERNS:
        for found in re.finditer(pattern, code):
            yield line[:found.start()] + SWAPS[found.group()] + line[found.end():]
    for found in NUMBER.finditer(code):
        more = str(int(found.group(1).replace("'", "")) + 1) + (found.group(2) or "")
        yield line[:found.start()] + more + line[found.end():]
    if found := CONDITION.match(code):
        inner = line[found.start(2):found.end(2)]
        yield line[:found.start(2)] + "!(" + inner + ")" + line[found.end(2):]
    if CALL.match(code):
        yield line[:len(line) - len(line.lstrip())] + ";"


def candidates(part):
    for file in sorted((ROOT / part).rglob("*.cpp")):
        name = str(file.relative_to(ROOT))
        for number, line in enumerate(file.read_text().split("\n")):
            for changed in mutations(line):
                yield name, number, line, changed


class Tree:
    """A copy of the sources that is built apart, so that several can be changed at a time."""

    def __init__(self, number):
        self.source = FOLDER / f"tree-{number}"
        self.build = FOLDER / f"build-{number}"

    def prepare(self, targets):
        files = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"], cwd=ROOT,
                               check=True, capture_output=True, text=True).stdout.split("\0")
        for name in filter(None, files):
            old, new = ROOT / name, self.source / name
            if old.is_file() and not (new.exists() and new.read_bytes() == old.read_bytes()):
                new.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(old, new)
        if not (self.build / "build.ninja").exists():
            subprocess.run(["cmake", "-S", self.source, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
                            "-DCMAKE_CXX_FLAGS=-O0", "-DPACELET_BENCHMARKS=OFF"], check=True, capture_output=True)
        self.make(targets, check=True)

    def make(self, targets, check=False):
        done = subprocess.run(["ninja", "-C", self.build, "-j", "1" if not check else str(os.cpu_count()), *targets],
                              capture_output=True, text=True)
        if check and done.returncode != 0:
            sys.exit(done.stdout[-4000:])
        return done.returncode == 0

    def passes(self, targets, patience):
        for target in targets:
            try:
                done = subprocess.run([self.build / "bin" / target, "--gtest_brief=1", "--gtest_fail_fast"],
                                      cwd=self.source, capture_output=True, timeout=patience,
                                      env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})
            except subprocess.TimeoutExpired:
                return False
            if done.returncode != 0:
                return False
        return True

    def judge(self, mutant, targets, patience):
        """"caught", "survived", or "void" where it does not even compile."""
        name, number, _, changed = mutant
        file = self.source / name
        text = file.read_text()
        lines = text.split("\n")
        lines[number] = changed
        try:
            file.write_text("\n".join(lines))
            if not self.make(targets):
                return "void"
            return "survived" if self.passes(targets, patience) else "caught"
        finally:
            file.write_text(text)


def listed(file):
    return [line for line in (HERE / file).read_text().splitlines() if line and not line.startswith("#")]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--count", type=int, default=100)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("parts", nargs="*", metavar="PART")
    wish = parser.parse_args()

    tests = {part: targets.split() for part, targets in (line.split(":") for line in listed("parts.txt"))}
    parts = wish.parts or list(tests)
    meaningless = {tuple(field.strip() for field in line.split(" | ")[:3]) for line in listed("judged.txt")}
    found = [(part, mutant) for part in parts for mutant in candidates(part)]
    chosen = random.Random(wish.seed).sample(found, min(wish.count, len(found)))
    chosen = [each for each in chosen
              if (each[1][0], each[1][2].strip(), each[1][3].strip()) not in meaningless]
    targets = sorted({target for part in parts for target in tests[part]})

    trees = [Tree(number) for number in range(os.cpu_count())]
    for tree in trees:
        tree.prepare(targets)
    patience = {}
    for part in parts:
        begin = time.monotonic()
        if not trees[0].passes(tests[part], 600):
            sys.exit(f"mutants: the tests of {part} fail without a change")
        patience[part] = 5 + 10 * (time.monotonic() - begin)

    free = list(trees)

    def work(each):
        part, mutant = each
        tree = free.pop()
        try:
            return each, tree.judge(mutant, tests[part], patience[part])
        finally:
            free.append(tree)

    counts = {}
    with concurrent.futures.ThreadPoolExecutor(len(trees)) as pool:
        for (part, (name, number, line, changed)), verdict in pool.map(work, chosen):
            counts.setdefault(part, {"caught": 0, "survived": 0, "void": 0})[verdict] += 1
            if verdict == "survived":
                print(f"{name}:{number + 1}\n  - {line.strip()}\n  + {changed.strip()}", flush=True)
    caught = survived = 0
    for part, count in sorted(counts.items()):
        caught += count["caught"]
        survived += count["survived"]
        print(f"{part}: {count['caught']} caught, {count['survived']} survived, {count['void']} void")
    if caught + survived > 0:
        print(f"caught {100 * caught / (caught + survived):.1f}% of {caught + survived} in {len(found)} possible")


if __name__ == "__main__":
    main()
