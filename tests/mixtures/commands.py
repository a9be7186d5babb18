# SPDX-License-Identifier: MIT
"""The command lines that random documents go through."""

import collections

# `arguments` name {source}, {output} (of the given suffix) and {folder}; words of the document are
# looked for in the output where `is_judged`. A word that two notes share is in two parts where notes
# are put into the text, as `parts_words` tells.
Command = collections.namedtuple("Command", "name arguments suffix is_judged parts_words")

OUTPUTS = ["txt", "rtf", "fdx", "html", "md", "bbcode", "odt", "pdf"]

# Name, words, suffix; "same" is the suffix of the input.
CHANGES = [
    ("inline", "convert --notes inline {source} {output}", "txt"),
    ("inspector", "convert --notes inspector {source} {output}", "rtf"),
    ("margin", "convert --notes margin {source} {output}", "pdf"),
    ("revisions", "convert --revisions --page-numbers --watermark D&<x> {source} {output}", "pdf"),
    ("outline", "convert --elements outline {source} {output}", "fdx"),
    ("media", "convert --extract-media {folder}/media {source} {output}", "md"),
    ("write", "markup --write {source} -o {output}", "txt"),
    ("read", "markup --read {source} -o {output}", "rtf"),
    ("endnotes", "endnotes {source} -o {output}", "rtf"),
    ("endnotes-mmd", "endnotes --style mmd {source} -o {output}", "md"),
    ("endnotes-ebook", "endnotes --style ebook {source} -o {output}", "html"),
    ("append", "append {source} {source} -o {output}", "same"),
    ("append-rtf", "append --page-break {source} {source} -o {output}", "rtf"),
    ("replace-same", "replace --regexp --find z\\b --with Z {source} -o {output}", "same"),
    ("make-inline", "notes {source} --make inline -o {output}", "rtf"),
    ("make-inspector", "notes {source} --make inspector -o {output}", "rtf"),
    ("make-comments", "notes {source} --make comments -o {output}", "rtf"),
    ("make-footnotes", "notes {source} --make footnotes -o {output}", "rtf"),
    ("make-annotations", "notes {source} --make annotations -o {output}", "rtf"),
    ("make-inline-footnotes", "notes {source} --make inline-footnotes -o {output}", "rtf"),
    ("make-inline-same", "notes {source} --make inline --trim -o {output}", "same"),
    ("enclose", "notes {source} --make annotations --trim --enclose [_] --as-text -o {output}",
     "txt"),
    ("links", "links {source} --remove all -o {output}", "rtf"),
]
# Words are changed or left out on purpose, or the output has none.
OTHERS = [
    ("replace", "replace --find z --with \u20ac<& {source} -o {output}", "rtf"),
    ("remove-same", "notes {source} --remove all -o {output}", "same"),
    ("png", "convert --dpi 30 {source} {output}", "png"),
] + [(name, name + " {source}", None) for name in (
    "info", "info --json", "count", "count --with-comments --with-footnotes", "notes",
    "notes --json", "links", "links --json", "pages", "pages --json")]


def commands(kind):
    """All that documents of a kind go through: first what converts it, then the others."""
    if kind == "markup":
        # Its words stand in codes until these are read.
        return ([made("read-" + suffix, "markup --read {source} -o {output}", suffix, True)
                 for suffix in OUTPUTS]
                + [made("read-anywhere", "markup --read --media anywhere {source} -o {output}",
                        "rtf", True)])
    same = {"text": "txt"}.get(kind, kind)
    all_commands = [made(suffix, "convert {source} {output}", suffix, True) for suffix in OUTPUTS]
    for table, is_judged in ((CHANGES, True), (OTHERS, False)):
        all_commands += [made(name, words, same if suffix == "same" else suffix, is_judged)
                         for name, words, suffix in table]
    if kind == "md":
        all_commands.append(made("smart", "convert --smart {source} {output}", "rtf", True))
    return all_commands


def made(name, words, suffix, is_judged):
    arguments = words.split(" ")
    # An empty word is a blank in an argument, as "_" is.
    return Command(name, [argument.replace("_", " ") if argument == "[_]" else argument
                          for argument in arguments if argument], suffix, is_judged,
                   name.startswith(("inline", "make", "write", "endnotes", "enclose")))
