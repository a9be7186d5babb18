#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Judges what the tool does to Final Draft files by what Python reads of them.

An unchanged file has to come back byte for byte; a word that is replaced may change nothing but
itself and the ranges of notes; every note is listed with what the file says of it; notes that are
removed take nothing along. Usage: fdxjudge.py TOOL FIRST_SEED LAST_SEED | FILE...
"""
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as etree

import fdxfiles

EDITS = 3  # of each file


def units(text):
    return text.encode("utf-16-le")


def text_of(paragraph):
    return "".join(run.text or "" for run in paragraph.findall("Text"))


def content_of(note):
    return "\n".join("".join(run.text or "" for run in paragraph.iter("Text"))
                     for paragraph in note.findall("Paragraph"))


def paragraphs_of(root):
    """All of title page and script, with those side by side."""
    def below(container):
        for paragraph in container.findall("Paragraph"):
            yield paragraph
            for dual in paragraph.findall("DualDialogue"):
                yield from below(dual)
    for content in root.findall("TitlePage/Content") + root.findall("Content"):
        yield from below(content)


def numbered(root):
    """The paragraphs of the script and where ranges count them: (start, units, has others in it)."""
    position = 0
    for paragraph in root.findall("Content/Paragraph"):
        is_dual = paragraph.find("DualDialogue") is not None
        text = units("  " if is_dual else text_of(paragraph))
        yield position, text, is_dual
        position += len(text) // 2 + 1


def range_of(note):
    start, end = sorted(int(number) for number in note.get("Range").split(","))
    return start, end


def text_in(root, start, end):
    """The text of a range; None where dual dialogue or half a character would be in it."""
    pieces = []
    paragraphs = list(numbered(root))
    end = min(end, paragraphs[-1][0] + len(paragraphs[-1][1]) // 2)
    for position, text, is_dual in paragraphs:
        if position < end and position + len(text) // 2 >= start:
            if is_dual:
                return None
            pieces.append(text[2 * max(0, start - position):2 * max(0, end - position)])
    try:
        return "\n".join(piece.decode("utf-16-le") for piece in pieces)
    except UnicodeDecodeError:
        return None


def place_of(root, word):
    """The number of a word in the script; far in front of it when it stands elsewhere."""
    for position, text, _ in numbered(root):
        offset = text.decode("utf-16-le").find(word)
        if offset >= 0:
            return position + len(units(text.decode("utf-16-le")[:offset])) // 2
    return -1000


def without_ranges(file):
    return re.sub(rb'Range="[0-9,]*"', b"", file)


def canonical(file):
    return without_ranges(etree.canonicalize(file.lstrip().decode()).encode())


def without_notes(root):
    """A file as text without its notes, and without the white space that stood around them."""
    for parent in list(root.iter()):
        for note in parent.findall("ScriptNote"):
            parent.remove(note)
    for element in root.iter():
        element.tail = None
        if element.tag != "Text" and not (element.text or "").strip():
            element.text = None
    return etree.tostring(root)


class Judge:
    def __init__(self, tool, folder):
        self.tool = tool
        self.source = folder / "in.fdx"
        self.target = folder / "out.fdx"

    def run(self, *arguments):
        done = subprocess.run([self.tool, *arguments], capture_output=True, check=False)
        if done.returncode:
            raise ValueError(f"{arguments[0]}: {done.stderr.decode()}")
        return done.stdout

    def faults(self, file):
        self.source.write_bytes(file)
        root = etree.fromstring(file.lstrip())
        yield from self.unchanged(file)
        yield from self.notes(root)
        yield from self.edits(file, root)
        yield from self.removal(file)

    def unchanged(self, file):
        self.run("convert", self.source, self.target)
        if self.target.read_bytes() != file:
            yield "the unchanged file is another one"

    def notes(self, root):
        listed = json.loads(self.run("notes", "--json", self.source))
        notes = list(root.iter("ScriptNote"))
        if len(listed) != len(notes):
            yield f"{len(notes)} notes, {len(listed)} listed"
        for note in notes:
            said = {"content": content_of(note), "date": note.get("DateTime"), "color": note.get("Color"),
                    "author": note.get("WriterName") or note.get("Author") or None}
            found = [entry for entry in listed if all(entry[key] == said[key] for key in said)]
            if not found:
                yield f"not listed: {said}"
                continue
            # Where several say the same, one of them is about this text.
            if "Range" in note.attrib and note.get("Range") and range_of(note)[0] < range_of(note)[1]:
                text = text_in(root, *range_of(note))
                if text is not None and all(entry["text"] != text for entry in found):
                    yield f"{note.get('Range')} is about {text!r}, listed is {found[0]['text']!r}"

    def edits(self, file, root):
        whole = file.decode("utf-8", "replace")
        words = {word for paragraph in paragraphs_of(root) for run in paragraph.findall("Text")
                 for word in re.findall(r"[A-Za-z0-9]{3,}", run.text or "")}
        once = [word for word in sorted(words) if whole.count(word) == 1]
        for word in once[::max(1, len(once) // EDITS)][:EDITS]:
            new = "Zzyzx" + "y" * (len(word) % 3)
            self.run("replace", "--match-case", "--find", word, "--with", new, "-o", self.target, self.source)
            after = self.target.read_bytes()
            back = after.replace(new.encode(), word.encode())
            if without_ranges(back) != without_ranges(file):
                yield f"{word} -> {new} changed more than the word"
                continue
            if canonical(after).replace(new.encode(), word.encode()) != canonical(file):
                yield f"{word} -> {new} changed the canonical form beyond the word"
            yield from self.ranges(root, etree.fromstring(after.lstrip()), word, new)

    def ranges(self, before, after, word, new):
        place = place_of(before, word)
        for old, now in zip(before.iter("ScriptNote"), after.iter("ScriptNote")):
            if not old.get("Range") or any(place < edge < place + len(word) for edge in range_of(old)):
                continue
            was = text_in(before, *range_of(old))
            text = text_in(after, *range_of(now))
            if was is not None and text != was.replace(word, new):
                yield f"{word} -> {new}: range {old.get('Range')} is about {text!r}, was {was!r}"

    def removal(self, file):
        self.run("notes", "--remove", "all", self.source, "-o", self.target)
        after = etree.fromstring(self.target.read_bytes().lstrip())
        if after.find(".//ScriptNote") is not None:
            yield "a note stayed"
        if without_notes(after) != without_notes(etree.fromstring(file.lstrip())):
            yield "more than notes was removed"


def main(tool, *what):
    if len(what) == 2 and what[0].isdigit():
        files = ((str(seed), fdxfiles.Maker(seed).file()) for seed in range(int(what[0]), int(what[1]) + 1))
    else:
        files = ((name, pathlib.Path(name).read_bytes()) for name in what)
    red = total = 0
    with tempfile.TemporaryDirectory() as folder:
        judge = Judge(tool, pathlib.Path(folder))
        for name, file in files:
            faults = list(judge.faults(file))
            for fault in faults:
                print(f"{name}: {fault[:300]}")
            red += bool(faults)
            total += 1
    print(f"{red} of {total} files with faults")
    return 1 if red else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
