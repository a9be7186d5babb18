# SPDX-License-Identifier: MIT
"""Runs the tool on a document, and says what is wrong with what comes of it."""

import collections
import json
import os
import re
import resource
import shutil

from mixtures.commands import OUTPUTS
from mixtures.visible import can_read, parted, visible_text, without_brackets, words
from mixtures.wellformed import fault_of, fault_of_xml

LIMIT = 60  # seconds of processor time, and of a clock the tenfold
SECONDS = 2.0  # for documents of this size, with room for busy machines
MEGABYTES = 110  # what the libraries take, and a page of a PDF
PER_MEGABYTE = 100  # of the input
PER_MEGABYTE_WRITTEN = 30
SLOWER = 8  # how much a tool with sanitizers is
LEAVES_NOTES_OUT = re.compile(r"\b(notes?|comments?|footnotes?)\b.* (left out|not read)|"
                              r"not read: .*\bnotes?\b")
MAY_REFUSE = re.compile("too long for pages|not a text file|nested too deep")

Run = collections.namedtuple("Run", "code seconds megabytes said")


class Judge:
    """Judges runs on one document after the other: begin() says which."""

    def __init__(self, tool, folder, is_sanitized):
        self.tool = tool
        self.folder = folder
        self.is_sanitized = is_sanitized
        self.runs = self.refused = 0
        self.begin("", set(), None)

    def begin(self, source, expected, mixture):
        """`expected` are the words that outputs have to show.

        It is None where the input is damaged: then outputs have to show what plain text does.
        """
        self.source = source
        self.expected = expected
        self.is_on_pages = mixture and mixture.is_plain
        self.is_whole = mixture and mixture.is_mild and expected is not None
        self.in_text = []  # the words in order, as plain text has them

    def run(self, arguments):
        said = os.path.join(self.folder, "said")
        child = os.fork()
        if child == 0:
            for descriptor, name in ((1, os.path.join(self.folder, "printed")), (2, said)):
                os.dup2(os.open(name, os.O_CREAT | os.O_WRONLY | os.O_TRUNC), descriptor)
            resource.setrlimit(resource.RLIMIT_CPU, (LIMIT, LIMIT))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
            try:
                os.execv(self.tool, [self.tool] + arguments)
            except OSError as error:  # this is a copy of the judge, which is to clear nothing up
                os.write(2, str(error).encode())
                os._exit(127)
        _, status, usage = os.wait4(child, 0)
        with open(said, encoding="utf-8", errors="replace") as file:
            text = file.read().strip()
        self.runs += 1
        return Run(os.waitstatus_to_exitcode(status), usage.ru_utime + usage.ru_stime,
                   usage.ru_maxrss / 1024, text)

    def path(self, name):
        return os.path.join(self.folder, name)

    def clear(self):
        for entry in list(os.scandir(self.folder)):
            if entry.is_dir():
                shutil.rmtree(entry.path)
            elif not entry.name.startswith("in."):
                os.remove(entry.path)

    def faults(self, command):
        """Lines that say what is wrong with this command's run."""
        self.clear()
        output = self.path("out.%s" % command.suffix) if command.suffix else None
        arguments = [argument.format(source=self.source, output=output, folder=self.folder)
                     for argument in command.arguments]
        run = self.run(arguments)
        written = os.path.getsize(output) if output and os.path.exists(output) else 0
        size = max(os.path.getsize(self.source), written * PER_MEGABYTE_WRITTEN / PER_MEGABYTE)
        if self.is_slow(run, size):  # the clock has its moods
            run = min(run, self.run(arguments), key=lambda one: one.seconds)
        self.refused += run.code == 1
        faults = self.faults_of_run(run, size) + self.left_behind(output)
        if run.code == 1 and output and os.path.exists(output):
            faults.append("an output though it failed: " + run.said)
        if (run.code == 1 and self.is_whole and command.name in OUTPUTS
                and not MAY_REFUSE.search(run.said)):
            faults.append("refused: " + run.said)
        if run.code == 0 and output:
            faults += self.faults_of_output(command, output, run.said)
        if run.code == 0 and "--json" in command.arguments:
            faults += self.faults_of_json(run, command)
        return faults

    def judged_words(self, command):
        if command.suffix == "pdf" and not self.is_on_pages:
            return set()
        if self.expected is None:
            return {word for word in self.in_text if word[0] == "q" and "q" in command.judged}
        return {word for word in self.expected if word[0] in command.judged}

    def faults_of_json(self, run, command):
        try:
            with open(self.path("printed"), encoding="utf-8") as file:
                content = json.load(file)
        except ValueError as error:
            return ["no JSON: %s" % error]
        if command.name != "notes --json" or LEAVES_NOTES_OUT.search(run.said):
            return []
        found = set(words(json.dumps(content).lower())) | set(self.in_text)
        lost = [word for word in self.expected or [] if word[0] == "n" and word not in found]
        return ["lists no note that has %s" % " ".join(lost[:8])] if lost else []

    def is_slow(self, run, size):
        factor = SLOWER if self.is_sanitized else 1
        return run.seconds > SECONDS * factor * max(1, size / 50_000)

    def faults_of_run(self, run, size):
        faults = []
        if run.code not in (0, 1):
            faults.append("ended with %d: %s" % (run.code, run.said[-300:]))
        if "Sanitizer" in run.said or "runtime error" in run.said:
            faults.append("sanitizer: " + run.said[:1500])
        if run.code == 1 and not run.said:
            faults.append("failed without a word")
        if re.search(r"\bassert|^Q[A-Z]\w+::", run.said, re.I | re.M):
            faults.append("said " + run.said)
        if self.is_slow(run, size):
            faults.append("took %.1f s" % run.seconds)
        if not self.is_sanitized and run.megabytes > MEGABYTES + PER_MEGABYTE * size / 1e6:
            faults.append("took %d MB" % run.megabytes)
        return faults

    def left_behind(self, output):
        allowed = {"said", "printed", "media", "footnotes.xhtml",
                   os.path.basename(output) if output else ""}
        return ["left %s behind" % entry.name for entry in os.scandir(self.folder)
                if entry.name not in allowed and not entry.name.startswith("in.")]

    def faults_of_output(self, command, output, said):
        if not os.path.exists(output):
            return ["no output"]
        fault = fault_of(output, command.suffix)
        if fault and not self.is_as_damaged(self.source, output):
            return [fault]
        expected = self.judged_words(command)
        if not can_read(command.suffix) or not (expected or command.name.endswith("txt")):
            return []
        text = self.text_of(output, command)
        if command.name in ("txt", "read-txt"):
            self.in_text = words(text)
        lost = self.lost_words(text, command, expected)
        if LEAVES_NOTES_OUT.search(said):
            lost = [word for word in lost if word[0] != "n"]
        faults = ["lost %d of %d words: %s; said \"%s\""
                  % (len(lost), len(expected), " ".join(lost[:8]), said[-200:])] if lost else []
        return faults + self.faults_of_order(text, command)

    def faults_of_order(self, text, command):
        """Words of the text stand once in it, and in the order of plain text."""
        is_judged = command.suffix in ("rtf", "md", "html", "odt") and command.judged
        if self.expected is None or not is_judged:
            return []
        shown = [word for word in words(text) if word[0] == "q"]
        before = collections.Counter(self.in_text)
        twice = [word for word, count in collections.Counter(shown).items()
                 if count > command.times * max(1, before[word])]
        if twice:
            return ["has more than once %s" % " ".join(twice[:8])]
        if command.times > 1 or command.name.startswith("read"):  # plain text has notes as well
            return []
        both = set(shown) & set(self.in_text)
        pairs = zip(*([word for word in found if word in both] for found in (self.in_text, shown)))
        differ = next((pair for pair in pairs if pair[0] != pair[1]), None)
        return ["has %s before %s" % (differ[1], differ[0])] if differ else []

    def text_of(self, output, command):
        text = visible_text(output, command.suffix)
        beside = self.path("footnotes.xhtml")
        if os.path.exists(beside):
            text += visible_text(beside, "html")
        return text

    @staticmethod
    def lost_words(text, command, expected):
        found = set(words(text)) | set(words(without_brackets(text)))
        lost = sorted(expected - found, key=lambda word: int(word[1:-1]))
        if command.parts_words and lost:
            is_parted = parted(text)
            lost = [word for word in lost if not is_parted(word)]
        if command.suffix == "pdf" and lost:
            # Words that go on behind what stands beside them: are all of their letters there?
            lost = [word for word in lost
                    if text.count(word[0]) < sum(one[0] == word[0] for one in expected)]
        return lost

    @staticmethod
    def is_as_damaged(source, output):
        """Final Draft files that are damaged themselves are changed in place, as they are."""
        if not (source.endswith(".fdx") and output.endswith(".fdx")):
            return False
        with open(source, "rb") as file:
            return bool(fault_of_xml(file.read()))

    def trip_faults(self, suffix):
        """Lines of a document against those of its conversion to `suffix`, both read as text."""
        self.clear()
        between, first, second = (self.path(name)
                                  for name in ("out." + suffix, "first.txt", "second.txt"))
        to_text = self.run(["convert", self.source, first])
        there = self.run(["convert", self.source, between])
        if to_text.code or there.code:
            return []
        back = self.run(["convert", between, second])
        if back.code and "nested too deep" in back.said and suffix == "html":
            return []  # frames are tables there, which have a limit
        if back.code:
            return ["what was written is not read: " + back.said]
        lines = [self.lines_of(path) for path in (first, second)]
        if lines[0] == lines[1]:
            return []
        differ = next((pair for pair in zip(*lines) if pair[0] != pair[1]), ([], []))
        return ["lines differ from %s, now %s; said \"%s\""
                % (*(" ".join(line) for line in differ), there.said[-200:])]

    def lines_of(self, path):
        """The words of each line that has some."""
        with open(path, encoding="utf-8", errors="replace") as file:
            lines = re.split("[\n\u2028]", file.read().lower())
        found = [[word for word in words(line) if word in self.expected and word[0] == "q"]
                 for line in lines]
        return [line for line in found if line]
