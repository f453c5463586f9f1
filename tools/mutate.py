#!/usr/bin/env python3
"""Do the tests of the core notice a fault? Makes one after the other, and runs the tests on each.

    tools/mutate.py [--jobs N] [--only TEXT]

The faults stand in tools/mutations.txt. Each is built and run in a copy of the tree under
build/mutate; the tree itself is never touched. A fault is caught when a test fails, crashes or
hangs. A fault that does not compile does not count. Fails when a fault survives that the table does
not explain, and when a fault has no place in the code any more.
"""
import argparse
import collections
import filecmp
import os
import queue
import shutil
import signal
import subprocess
import sys
import threading
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
TABLE = os.path.join(ROOT, "tools", "mutations.txt")
SCRATCH = os.path.join(ROOT, "build", "mutate")
TEST_SECONDS = 180  # the slowest test takes a minute
LAST = "faults_test"  # that one: for what no other test has seen
# The tests that know a folder best come first, so that most faults cost one program.
FIRST = {
    "base/": ["channel_codec_test"],
    "radio/models": ["tables_test"],
    "radio/settings": ["settings_codec_test"],
    "radio/dial_": ["settings_codec_test"],
    "document/defaults": ["settings_codec_test"],
    "document/document": ["safe_write_test", "settings_codec_test", "ctl_test"],
    "document/dialog": ["editing_test"],
    "document/edit": ["editing_test"],
    "document/memory_edit": ["editing_test"],
    "document/clone_image": ["editing_test", "channel_codec_test"],
    "radio/": ["channel_codec_test"],
    "document/": ["editing_test"],
    "files/channel_csv": ["channel_csv_test"],
    "files/csv_text": ["channel_csv_test"],
    "files/clone_file": ["clone_file_test"],
    "files/": ["whole_file_test", "clone_file_test"],
    "link/safe_write": ["safe_write_test"],
    "link/sequences": ["sequences_test", "safe_write_test"],
    "link/reply": ["sequences_test"],
    "link/write_plan": ["sequences_test", "safe_write_test"],
    "link/": ["link_test", "sequences_test"],
    "sim/": ["sim_test"],
}

Mutation = collections.namedtuple("Mutation", "number file reason old new nth explained")


def read_table(path):
    """Blocks of "FILE: reason", "- old" lines, "+ new" lines and perhaps "= explanation"."""
    mutations = []
    with open(path, encoding="utf-8") as file:
        blocks = file.read().split("\n\n")
    for block in blocks:
        lines = [line for line in block.split("\n") if line and not line.startswith("#")]
        if not lines:
            continue
        place, reason = lines[0].split(": ", 1)
        file, _, nth = place.partition(" @")
        part = {mark: [line[2:] for line in lines[1:] if line[:1] == mark] for mark in "-+="}
        mutations.append(Mutation(len(mutations) + 1, file, reason, "\n".join(part["-"]),
                                  "\n".join(part["+"]), int(nth or 0), " ".join(part["="])))
    return mutations


def mutated(mutation, text):
    """The text with the fault. None when the fault has no place, or more than one."""
    count = text.count(mutation.old)
    if not mutation.old or mutation.nth > count or (mutation.nth == 0 and count != 1):
        return None
    at = -1
    for _ in range(max(mutation.nth, 1)):
        at = text.index(mutation.old, at + 1)
    return text[:at] + mutation.new + text[at + len(mutation.old):]


class Worker:
    """A copy of the tree with a build of its own."""

    def __init__(self, number):
        self.tree = os.path.join(SCRATCH, f"tree{number}")
        self.build = os.path.join(SCRATCH, f"build{number}")
        self.tests = []

    def prepare(self):
        self.copy_tree()
        # No -g: nobody looks into these programs, and they link faster.
        subprocess.run(["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja",
                        "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0",
                        "-DWARNINGS_AS_ERRORS=OFF"], check=True, stdout=subprocess.DEVNULL)
        if not self.make("core_tests") or not self.make(LAST):
            sys.exit("the core does not build")
        with open(os.path.join(self.build, "tests", "core_tests.txt"), encoding="utf-8") as file:
            self.tests = file.read().split() + [LAST]

    def copy_tree(self):
        """Writes only what differs, with today's time: an old time would hide a change from the
        build, which compares times."""
        mine = set()
        for folder, folders, files in os.walk(ROOT):
            folders[:] = [name for name in folders if name not in ("build", ".git")]
            to = os.path.join(self.tree, os.path.relpath(folder, ROOT))
            os.makedirs(to, exist_ok=True)
            for name in files:
                source, target = os.path.join(folder, name), os.path.normpath(os.path.join(to, name))
                mine.add(target)
                if not os.path.exists(target) or not filecmp.cmp(source, target, shallow=False):
                    shutil.copy(source, target)
        for folder, _, files in os.walk(self.tree):
            for name in files:
                if os.path.join(folder, name) not in mine:
                    os.remove(os.path.join(folder, name))

    def make(self, target):
        command = ["ninja", "-C", self.build, "-j", "1", target]
        return subprocess.run(command, stdout=subprocess.DEVNULL, check=False).returncode == 0

    def passes(self, test):
        with subprocess.Popen([os.path.join(self.build, "tests", test)], cwd=self.build,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              start_new_session=True) as process:
            try:
                return process.wait(TEST_SECONDS) == 0
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, signal.SIGKILL)
                return False

    def order(self, file):
        first = next((tests for start, tests in FIRST.items() if file.startswith(start)), [])
        return first + [test for test in self.tests if test not in first]

    def run(self, mutation):
        """ "caught" and by which test, "survived", "no place" or "does not compile"."""
        path = os.path.join(self.tree, "src", mutation.file)
        with open(path, encoding="utf-8") as file:
            original = file.read()
        text = mutated(mutation, original)
        if text is None:
            return "no place", ""
        try:
            with open(path, "w", encoding="utf-8") as file:
                file.write(text)
            for test in self.order(mutation.file):
                if not self.make(test):
                    return "does not compile", ""
                if not self.passes(test):
                    return "caught", test
            return "survived", ""
        finally:
            with open(path, "w", encoding="utf-8") as file:
                file.write(original)


def run_all(mutations, jobs):
    """Results by number. One file's faults stay together: each is then one file to compile."""
    groups = collections.defaultdict(list)
    for mutation in mutations:
        groups[mutation.file].append(mutation)
    waiting = queue.Queue()
    for group in sorted(groups.values(), key=len, reverse=True):
        waiting.put(group)
    results = {}
    failures = []

    def work(number):
        try:
            worker = Worker(number)
            worker.prepare()
            broken = [test for test in worker.tests if not worker.passes(test)]
            if broken:
                raise RuntimeError("fails without any fault: " + ", ".join(broken))
            while not failures:
                for mutation in waiting.get_nowait():
                    results[mutation.number] = worker.run(mutation)
                    show(mutation, results[mutation.number])
        except queue.Empty:
            pass
        except (Exception, SystemExit) as error:  # of a thread, which would only print it
            failures.append(error)

    threads = [threading.Thread(target=work, args=(n,)) for n in range(jobs)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    if failures:
        sys.exit(str(failures[0]))
    return results


def show(mutation, result):
    status, test = result
    by = f" by {test}" if test else ""
    why = ""
    if mutation.explained:
        why = f" ({mutation.explained})" if status == "survived" else " (explained, though)"
    print(f"{mutation.number:4} {status}{by}: {mutation.file}: {mutation.reason}{why}", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--only", default="", help="faults whose file or reason contains this")
    options = parser.parse_args()
    start = time.monotonic()
    mutations = [m for m in read_table(TABLE) if options.only in f"{m.file}: {m.reason}"]
    results = run_all(mutations, max(options.jobs, 1))
    count = collections.Counter(status for status, _ in results.values())
    explained = sum(1 for m in mutations if m.explained and results[m.number][0] == "survived")
    print(f"{len(results) - count['does not compile'] - count['no place']} faults: "
          f"{count['caught']} caught, {count['survived']} survived ({explained} explained); "
          f"{count['does not compile']} did not compile, {count['no place']} had no place; "
          f"{time.monotonic() - start:.0f} s")
    return 0 if count["survived"] == explained and not count["no place"] else 1


if __name__ == "__main__":
    sys.exit(main())
