#!/usr/bin/env python3
"""Do the tests notice a fault? Makes one after the other, and runs the tests on each.

    tools/mutate.py [--jobs N] [--only TEXT]... [--check]

The faults stand in tools/mutations.txt. Each is built and run in a copy of the tree under
build/mutate; the tree itself is never touched. A fault is caught when a test fails, crashes or
hangs. Fails when a fault survives that the table does not explain, when one does not compile, and,
before anything is built, when one has no place in the code any more, or more than one. With --check
that is all that is looked at.
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
TEST_SECONDS = 180  # the slowest tests take a minute
LASTS = ["faults_test", "net_faults_test"]  # for what no other test of the core has seen
GUI = "gui_test --gtest_filter="
PROGRAMS = "programs_test --gtest_filter=Programs."
# Programs with their arguments. Those that know a folder best come first, so that most faults cost
# one, and seconds.
FIRST = {
    "base/": ["channel_codec_test"],
    "radio/models": ["tables_test"],
    "radio/settings": ["settings_codec_test"],
    "radio/dial_": ["settings_codec_test"],
    "document/value_rules": ["ctl_test --gtest_filter=CtlJson.The*"],
    "document/defaults": ["settings_codec_test"],
    "document/document_parts": ["history_test"],
    "document/radio_content": ["ctl_test"],
    "files/radio_copy": ["ctl_test"],
    "document/document": ["safe_write_test", "settings_codec_test", "ctl_test"],
    "document/dialog": ["editing_test"],
    "document/history": ["history_test"],
    "document/edit": ["editing_test"],
    "document/memory_edit": ["editing_test"],
    "document/clone_image": ["editing_test", "channel_codec_test"],
    "radio/": ["channel_codec_test"],
    "document/": ["editing_test"],
    "files/channel_csv": ["channel_csv_test"],
    "files/channel_table": ["channel_csv_test"],
    "channel_list/": [GUI + "ChannelList.*"],
    "app/channel_list": [GUI + "ChannelList.*:PagesTest.Cells*"],
    "files/csv_text": ["channel_csv_test"],
    "files/clone_file": ["clone_file_test"],
    "files/backup": ["whole_file_test"],
    "files/unfinished": ["whole_file_test"],
    "files/journal.cpp": ["clone_file_test"],
    "files/journal_folder": [GUI + "JournalTest.*"],
    "files/": ["whole_file_test", "clone_file_test"],
    "link/safe_write": ["safe_write_test", "ctl_test"],
    "link/write_texts": ["safe_write_test", "ctl_test"],
    "link/unit_sequences": ["safe_write_test", "ctl_test"],
    "link/sequence": ["sequences_test", "safe_write_test", "ctl_test"],
    "link/reply": ["sequences_test"],
    "link/write_plan": ["sequences_test", "safe_write_test"],
    "link/": ["link_test", "sequences_test"],
    "sim/": ["sim_test"],
    "card/": ["card_test"],
    "card_paint/": [PROGRAMS + "AChannelCard*", GUI + "Card.*"],
    "dialogs/dlg_card": [GUI + "Card.*"],
    "app/card": [GUI + "Card.*"],
    "programs/ctl/cmd_card": [PROGRAMS + "AChannelCard*"],
    "programs/ctl/helper": ["ctl_test --gtest_filter=HelperProgram.*"],
    "checkup/": ["checkup_test", "ctl_test"],
    "lists/": ["lists_test"],
    "programs/ctl/other_list": ["ctl_test --gtest_filter=CtlList.*"],
    "programs/ctl/clone_": ["ctl_test --gtest_filter=CtlJson.*"],
    "programs/ctl/json_": ["ctl_test --gtest_filter=CtlJson.*", "documents_test --gtest_filter=*Json*"],
    "programs/ctl/named_": ["ctl_test --gtest_filter=CtlJson.*"],
    "programs/ctl/document_text": ["documents_test --gtest_filter=Documents.Show*"],
    "programs/ctl/": ["ctl_test"],
    "programs/sim/": [PROGRAMS + "ReadEditWrite*:*PulledOut*"],
    "programs/startup": ["tables_test"],
    "programs/": ["ctl_test"],
    "serial/lock_file": [PROGRAMS + "AnotherUsers*"],
    "serial/device_guard": [PROGRAMS + "PortsThat*:*.AnotherUsers*:*PulledOut*"],
    "serial/": [PROGRAMS + "PortsThat*:*PulledOut*:*Interrupt*:*Signals*"],
    "widgets/change_mark": [GUI + "Changes.*"],
    "widgets/filtered_edit": [GUI + "PagesTest.Dial*:Modify.Fields*:Modify.AWhole*"],
    "widgets/held_keys": [GUI + "PagesTest.AHeld*"],
    "widgets/option_group": [GUI + "Modify.Each*:Modify.Tab*:PagesTest.TheKeyboard*"],
    "widgets/message_box": [GUI + "FileCommands.WhatCannot*"],
    "widgets/": [GUI + "RadioCommands.TheFocus*:*.TheWindow*:*.OneBusy*"],
    "pages/grid_columns": ["tables_test"],
    "pages/settings": [GUI + "PagesTest.Every*:*.Dial*:Wiring.EachClick*", GUI + "Wiring.Every*"],
    "pages/service": [GUI + "RadioCommands.Service*"],
    "pages/special": [GUI + "Wiring.The*:Wiring.EachClick*"],
    "pages/": [GUI + "Wiring.EachChange*:PagesTest.A*:PagesTest.Whatever*", GUI + "Wiring.*"],
    "dialogs/dlg_modify": [GUI + "Modify.*"],
    "dialogs/dlg_com": [GUI + "RadioCommands.ThePort*"],
    "dialogs/help": [GUI + "Help.*"],
    "dialogs/change": [GUI + "Changes.*"],
    "dialogs/write_question": [GUI + "Changes.*"],
    "dialogs/report": [GUI + "Net.*"],
    "dialogs/backups": [GUI + "Backups.*"],
    "dialogs/": [GUI + "CheckUpTest.*"],
    "import_other/": [GUI + "ImportOther.*"],
    "app/import_other": [GUI + "ImportOther.*"],
    "app/unfinished": [GUI + "Commands.*"],
    "app/write_keeper": [GUI + "Commands.*"],
    "app/unit": [GUI + "Commands.*"],
    "app/stop": [GUI + "Backups.*"],
    "app/backups": [GUI + "Backups.*"],
    "app/undo": [GUI + "UndoTest.*"],
    "app/journal": [GUI + "JournalTest.*"],
    "app/change": [GUI + "Changes.*"],
    "app/known": [GUI + "Changes.*"],
    "app/routing": [GUI + "Wiring.Every*"],
    "app/frm_main": [GUI + "Wiring.*:RadioCommands.*Busy*:*.AnotherM*:*.NothingRuns*:*.ExitAsks*"],
    "app/radio_": [GUI + "Commands.*:RadioTexts.*:RadioCommands.Err*:*.Damaged*:Net.A*:CheckUp*"],
    "app/": [GUI + "FileCommands.*:Commands.*:CheckUpTest.*:PagesTest.A*:*.StartUp*:*.ThePort*"],
}
# All that can see a fault of a room which the tests of the core do not know.
ROOMS = {
    "programs/completion/": ["completion_test"],
    "programs/sim/": ["programs_test", "documents_test"],
    "programs/ctl/": ["ctl_test", "programs_test", "documents_test"],
    "serial/": ["programs_test"],
    "widgets/": ["gui_test"],
    "pages/": ["gui_test"],
    "channel_list/": ["gui_test"],
    "card_paint/": ["programs_test", "gui_test"],
    "import_other/": ["gui_test"],
    "dialogs/": ["gui_test"],
    "app/": ["gui_test"],
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


def of_file(table, file, default=None):
    """The row of a table of folders that a file lies in; the first that fits."""
    return next((row for start, row in table.items() if file.startswith(start)), default)


def mutated(mutation, text):
    """The text with the fault. None when the fault has no place, or more than one."""
    count = text.count(mutation.old)
    if not mutation.old or mutation.nth > count or (mutation.nth == 0 and count != 1):
        return None
    at = -1
    for _ in range(max(mutation.nth, 1)):
        at = text.index(mutation.old, at + 1)
    return text[:at] + mutation.new + text[at + len(mutation.old):]


def misplaced(mutation):
    """Why a fault cannot be made. Empty when it can."""
    path = os.path.join(ROOT, "src", mutation.file)
    if not os.path.exists(path):
        return "no such file"
    with open(path, encoding="utf-8") as file:
        text = file.read()
    changed = mutated(mutation, text)
    if changed is None:
        places = text.count(mutation.old) if mutation.old else 0
        return f"{places} places"
    return "changes nothing" if changed == text else ""


class Worker:
    """A copy of the tree with a build of its own."""

    def __init__(self, number):
        self.tree = os.path.join(SCRATCH, f"tree{number}")
        self.build = os.path.join(SCRATCH, f"build{number}")
        self.output = os.path.join(SCRATCH, f"output{number}.txt")  # of the test that ran last
        self.core = []

    def prepare(self, mutations):
        """Builds what the faults need. Without any fault everything must pass."""
        self.copy_tree()
        # No -g: nobody looks into these programs, and they link faster.
        subprocess.run(["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja",
                        "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0",
                        "-DWARNINGS_AS_ERRORS=OFF"], check=True, stdout=subprocess.DEVNULL)
        with open(os.path.join(self.build, "tests", "core_tests.txt"), encoding="utf-8") as file:
            self.core = file.read().split()
        needed = {test for mutation in mutations for test in self.order(mutation.file)}
        for test in sorted(needed):
            if error := self.make(test):
                raise RuntimeError(f"{test} does not build without any fault: {error}")
        for test in sorted(needed):
            if not self.passes(test) or self.is_empty(test):
                with open(self.output, encoding="utf-8", errors="replace") as file:
                    said = "".join(file.readlines()[-40:])
                raise RuntimeError(f"{said}{test} fails without any fault, or has no tests")

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

    def make(self, test):
        """The first complaint of the build; empty when all is well."""
        target = "completions" if test == "completion_test" else test.split()[0]
        ninja = subprocess.run(["ninja", "-C", self.build, "-j", "1", target], text=True,
                               stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        if ninja.returncode == 0:
            return ""
        lines = ninja.stdout.splitlines()
        return next((line for line in lines if "error" in line), lines[-1] if lines else "?")

    def command(self, test):
        if test == "completion_test":
            folders = [os.path.join(self.build, "completions", shell) for shell in ("bash", "zsh")]
            return ["bash", os.path.join(self.tree, "tests", "completion_test.sh"), *folders]
        program, *arguments = test.split()
        return [os.path.join(self.build, "tests", program), "--gtest_fail_fast", *arguments]

    def passes(self, test):
        with open(self.output, "w", encoding="utf-8") as output, \
                subprocess.Popen(self.command(test), cwd=self.build, start_new_session=True,
                                 env={**os.environ, "QT_QPA_PLATFORM": "offscreen"},
                                 stdout=output, stderr=subprocess.STDOUT) as process:
            try:
                return process.wait(TEST_SECONDS) == 0
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, signal.SIGKILL)
                return False

    def is_empty(self, test):
        """Whether a filter lets nothing through, which passes too."""
        if "--gtest_filter" not in test:
            return False
        listed = subprocess.run([*self.command(test), "--gtest_list_tests"], text=True, check=False,
                                env={**os.environ, "QT_QPA_PLATFORM": "offscreen"},
                                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        return not any(line.startswith("  ") for line in listed.stdout.splitlines())

    def order(self, file):
        first = of_file(FIRST, file, [])
        return first + [t for t in of_file(ROOMS, file, self.core + LASTS) if t not in first]

    def run(self, mutation):
        """ "caught" and by which test, "survived", or "does not compile" and why."""
        path = os.path.join(self.tree, "src", mutation.file)
        with open(path, encoding="utf-8") as file:
            original = file.read()
        try:
            with open(path, "w", encoding="utf-8") as file:
                file.write(mutated(mutation, original))
            for test in self.order(mutation.file):
                if error := self.make(test):
                    return "does not compile", error
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
            worker.prepare(mutations)
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
    status, what = result
    by = f" by {what.split()[0]}" if status == "caught" else ""
    why = ""
    if mutation.explained:
        why = f" ({mutation.explained})" if status == "survived" else " (explained, though)"
    if status == "does not compile":
        why = f" ({what})"
    print(f"{mutation.number:4} {status}{by}: {mutation.file}: {mutation.reason}{why}", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--only", metavar="TEXT", action="append",
                        help="faults whose file or reason contains this, or another --only")
    parser.add_argument("--check", action="store_true", help="only whether each has its place")
    options = parser.parse_args()
    start = time.monotonic()
    mutations = read_table(TABLE)
    lost = [(mutation, why) for mutation in mutations if (why := misplaced(mutation))]
    for mutation, why in lost:
        print(f"{mutation.number:4} {why}: {mutation.file}: {mutation.reason}")
    if lost or options.check:
        print(f"{len(mutations)} faults, {len(lost)} without their place")
        return 1 if lost else 0
    mutations = [m for m in mutations
                 if any(text in f"{m.file}: {m.reason}" for text in options.only or [""])]
    results = run_all(mutations, max(options.jobs, 1))
    count = collections.Counter(status for status, _ in results.values())
    explained = sum(1 for m in mutations if m.explained and results[m.number][0] == "survived")
    print(f"{len(results) - count['does not compile']} faults: {count['caught']} caught, "
          f"{count['survived']} survived ({explained} explained); "
          f"{count['does not compile']} did not compile; {time.monotonic() - start:.0f} s")
    return 0 if count["survived"] == explained and not count["does not compile"] else 1


if __name__ == "__main__":
    sys.exit(main())
