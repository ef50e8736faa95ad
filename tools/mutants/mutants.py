#!/usr/bin/env python3
"""mutants.py [--count N] [--seed S] [--jobs J] [--log FILE] [--tests] PART...: tries N small changes to parts of the
code against these parts' tests. A change that no test notices is printed: either a test is missing, or the change
means nothing, which judged.txt then says. PART is a folder of parts.txt, or one above; none stands for all, and a
count of 0 for every change there is. --tests tells which tests never were the only ones to notice a change."""

import argparse
import collections
import concurrent.futures
import hashlib
import json
import os
import pathlib
import random
import re
import shlex
import shutil
import subprocess
import sys
import time

sys.dont_write_bytecode = True
from changes import asleep, changes_of, constants

ROOT = pathlib.Path(__file__).resolve().parents[2]
HERE = pathlib.Path(__file__).resolve().parent
FOLDER = ROOT / "build" / "mutants"
SOURCE, BUILD, KEPT = FOLDER / "tree", FOLDER / "build", FOLDER / "kept"
MEMORY = 6 << 30
# What the programs end with: see Switches.h, and what GoogleTest says of a failure.
IMPOSSIBLE, FAILED = 77, 1


def run(command, **more):
    return subprocess.run(command, capture_output=True, text=True, errors="replace", **more)


def write(file, text):
    """Writes what is new; what stands there already need not be built again."""
    if not file.is_file() or file.read_text() != text:
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)


def copy_tree(but):
    files = run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"], cwd=ROOT, check=True).stdout
    for name in filter(None, files.split("\0")):
        old, new = ROOT / name, SOURCE / name
        if name not in but and old.is_file() and not (new.exists() and new.read_bytes() == old.read_bytes()):
            new.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(old, new)
    if not (BUILD / "build.ninja").exists():
        done = run(["cmake", "-S", SOURCE, "-B", BUILD, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
                    "-DCMAKE_UNITY_BUILD=ON", "-DCMAKE_UNITY_BUILD_BATCH_SIZE=12", "-DPACELET_BENCHMARKS=OFF",
                    f"-DCMAKE_CXX_FLAGS=-O0 -std=c++20 -w -Wno-error -Wno-narrowing -include {HERE}/Switches.h"])
        if done.returncode != 0:
            sys.exit(done.stderr)


def ninja(targets, jobs):
    done = run(["ninja", "-C", BUILD, "-j", str(jobs), *targets])
    if done.returncode != 0:
        sys.exit(done.stdout[-6000:])


def commands():
    """The compiler's words for each source file, with "FILE" in its place."""
    found = {}
    for entry in json.loads((BUILD / "compile_commands.json").read_text()):
        words = shlex.split(entry["command"])
        piece = pathlib.Path(entry["file"])
        if "/Unity/" not in entry["file"] or not piece.exists():
            continue
        words = [word for word in words[:words.index("-o")]] + ["-S", "-o", "/dev/null", "-fmax-errors=0"]
        for name in re.findall(r'#include "([^"]+)"', piece.read_text()):
            found[os.path.relpath(name, SOURCE)] = words + ["-iquote", str(pathlib.Path(name).parent)]
    return found


def kept(name):
    return KEPT / (name.replace("/", ",") + ".json")


def state_of(name, text):
    """What it depends on which changes compile."""
    return hashlib.sha256((name + text + (HERE / "changes.py").read_text()).encode()).hexdigest()


def remembered(name, text):
    """What is known of the file from a run before, if it is as it was."""
    memory = kept(name)
    known = json.loads(memory.read_text()) if memory.is_file() else {}
    return known if known.get("state") == state_of(name, text) else None


def possible(name, text, command):
    """The changes of a file that compile side by side, and the text with all of them asleep. What the compiler
    complains of is left out, until it complains no more."""
    changes, plain = changes_of(name, text), constants(text)
    if known := remembered(name, text):
        changes = [change for change in changes if change.number in set(known["changes"])]
        plain = {line: piece for line, piece in plain.items() if line in set(known["plain"])}
        return changes, asleep(text, [piece for change in changes for piece in change.pieces] + list(plain.values()))
    trial = KEPT / (name.replace("/", ",") + ".trial.cpp")
    for _ in range(40):
        changed = asleep(text, [piece for change in changes for piece in change.pieces] + list(plain.values()))
        write(trial, f'#line 1 "{trial}"\n{changed}')
        done = run([*command, trial])
        if done.returncode == 0:
            trial.unlink()
            break
        wrong = {int(line) for line in re.findall(rf"^{trial}:(\d+):", done.stderr, re.MULTILINE)}
        fewer = [change for change in changes if not wrong & {
            text.count("\n", 0, place) + 1 for piece in change.pieces for place in piece[:2]}]
        less = {line: piece for line, piece in plain.items() if line not in wrong}
        if len(fewer) == len(changes) and len(less) == len(plain):
            # A complaint about a line that is as it was: it may be some constant's that is none any more.
            fewer, less = (changes, {}) if plain else ([], {})
        changes, plain = fewer, less
    else:
        changes, plain, changed = [], {}, text
    write(kept(name), json.dumps({"state": state_of(name, text), "changes": [change.number for change in changes],
                              "plain": list(plain)}))
    return changes, changed


def attempt(tests, patience, number, all_tests=False):
    """(verdict, names of the tests that failed, only the first unless all are wished): "caught", "survived", or
    "void" where it would not even compile."""
    failed = []
    for test in tests:
        if failed and not all_tests:
            break
        environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "PACELET_MUTANT": str(number),
                       "RC_PARAMS": "seed=1"}
        try:
            done = run(["prlimit", f"--cpu={int(patience[test])}", f"--as={MEMORY}", "--core=0", BUILD / "bin" / test,
                        *([] if all_tests else ["--gtest_fail_fast"])],
                       cwd=SOURCE, timeout=60 + 5 * patience[test], env=environment)
            output, code = done.stdout, done.returncode
        except subprocess.TimeoutExpired as late:
            output, code = (late.stdout or b"").decode(errors="replace"), -1
        if code == IMPOSSIBLE:
            return "void", []
        if code != 0:
            names = set(re.findall(r"^\[  FAILED  \] ([\w./]+\.[\w./]+)", output, re.MULTILINE))
            if code != FAILED:
                names |= set(re.findall(r"^\[ RUN      \] (\S+)", output, re.MULTILINE)[-1:])
            failed += [f"{test}:{name}" for name in sorted(names)] or [test]
    return ("caught" if failed else "survived"), failed


def listed(file):
    return [line for line in (HERE / file).read_text().splitlines() if line and not line.startswith("#")]


def prepare(tests, parts, jobs):
    """Builds the programs with every change of these parts asleep in them, and returns the changes by part."""
    files = {part: [str(file.relative_to(ROOT)) for file in sorted((ROOT / part).glob("*.cpp"))] for part in tests}
    changeable = {name for names in files.values() for name in names}
    # What stands there with its changes asleep stays, unless it was written since.
    copy_tree({name for name in changeable if (SOURCE / name).exists() and remembered(name, (ROOT / name).read_text())})
    targets = sorted({target for part in parts for target in tests[part]})
    # Before the changes come in: what is made by the build must be there when they are tried one file at a time.
    ninja(targets, jobs)
    words = commands()
    found = []

    def change(task):
        part, name = task
        text = (ROOT / name).read_text()
        changes, changed = possible(name, text, words[name])
        write(SOURCE / name, changed)
        return part, name, changes, len(changes_of(name, text))

    for part, names in files.items():
        for name in names:
            if part not in parts and not kept(name).is_file():
                write(SOURCE / name, (ROOT / name).read_text())
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        tasks = [(part, name) for part in parts for name in files[part]]
        for part, name, changes, every in pool.map(change, tasks):
            found += [(part, each) for each in changes]
            if every > len(changes):
                print(f"{name}: {every - len(changes)} of {every} changes left out", file=sys.stderr, flush=True)
    ninja(targets, jobs)
    return found


def pattern(row):
    """One row of judged.txt: file, line and changed line, in which * stands for anything."""
    return re.compile(re.escape(" | ".join(row.split(" | ")[:3])).replace(r"\*", ".*"))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--count", type=int, default=0)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--log", type=argparse.FileType("a"))
    parser.add_argument("--tests", action="store_true")
    parser.add_argument("parts", nargs="*", metavar="PART")
    wish = parser.parse_args()

    tests = {part: targets.split() for part, targets in (line.split(":") for line in listed("parts.txt"))}
    parts = [part for part in tests
             if not wish.parts or any(f"{part}/".startswith(f"{name}/") for name in wish.parts)]
    if not parts:
        sys.exit("mutants: no such part in parts.txt")
    judged = [pattern(row) for row in listed("judged.txt")]

    def means_nothing(change):
        return any(row.fullmatch(" | ".join(change.key())) for row in judged)

    found = prepare(tests, parts, wish.jobs)
    chosen = found if wish.count == 0 else random.Random(wish.seed).sample(found, min(wish.count, len(found)))
    chosen = [(part, change) for part, change in chosen if not means_nothing(change)]

    patience = {}
    for test in sorted({test for part in parts for test in tests[part]}):
        begin = os.times()
        verdict, failed = attempt([test], {test: 600}, -1)
        end = os.times()
        if verdict != "survived":
            sys.exit(f"mutants: without a change {' '.join(failed)} fails")
        patience[test] = 3 + 5 * (end.children_user - begin.children_user +
                                  end.children_system - begin.children_system)

    counts = {part: collections.Counter() for part in parts}
    noticed, alone = collections.Counter(), collections.Counter()
    begin = time.monotonic()
    with concurrent.futures.ThreadPoolExecutor(wish.jobs) as pool:
        tries = pool.map(lambda each: attempt(tests[each[0]], patience, each[1].number, wish.tests), chosen)
        for (part, change), (verdict, failed) in zip(chosen, tries):
            counts[part][verdict] += 1
            noticed.update(failed)
            alone.update(failed if len(failed) == 1 else [])
            if wish.log:
                wish.log.write(f"{verdict} {change.told()}\n  {' '.join(failed)}\n")
                wish.log.flush()
            if verdict == "survived":
                print(change.told(), flush=True)
    total = collections.Counter()
    for part, count in counts.items():
        total += count
        print(f"{part}: {count['caught']} caught, {count['survived']} survived, {count['void']} void")
    tried = total["caught"] + total["survived"]
    if tried > 0:
        print(f"caught {100 * total['caught'] / tried:.1f}% of {tried}, out of {len(found)} possible, "
              f"{(time.monotonic() - begin) / tried:.2f} s each")
    if wish.tests:
        for test, count in sorted(noticed.items()):
            print(f"{test}: noticed {count}, {alone[test]} alone")


if __name__ == "__main__":
    main()
