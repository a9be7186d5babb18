# SPDX-License-Identifier: MIT
"""The command lines that random documents go through."""

import collections

# `arguments` name {source}, {output} (of the given suffix) and {folder}; of the words of the document,
# those that begin with one of `judged` are looked for in the output, `times` times. A word that two
# notes share is in two parts where notes are put into the text, as `parts_words` tells.
Command = collections.namedtuple("Command", "name arguments suffix judged times parts_words")

OUTPUTS = ["txt", "rtf", "fdx", "html", "md", "bbcode", "odt", "pdf"]

# Name, words, suffix; "same" is the suffix of the input.
CHANGES = [
    ("paper", "convert --paper a4 {source} {output}", "html"),
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
    ("append-pdf", "append --page-break {source} {source} -o {output}", "pdf"),
    ("write-markdown", "markup --write {source} -o {output}", "md"),
    ("trim", "notes {source} --trim -o {output}", "same"),
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
# Notes are left out on purpose.
WITHOUT_NOTES = [
    ("remove-same", "notes {source} --remove all -o {output}", "same"),
    ("remove-comments", "notes {source} --remove comments -o {output}", "md"),
    ("drop", "convert --notes drop {source} {output}", "rtf"),
    ("replace-blanks", "replace --regexp --find \\s+ --with . {source} -o {output}", "rtf"),
]
# Words are changed or left out on purpose, or the output has none.
OTHERS = [
    ("replace", "replace --find z --with \u20ac<& {source} -o {output}", "rtf"),
    ("png", "convert --dpi 30 {source} {output}", "png"),
    ("some-pages", "convert --pages 1-2 {source} {output}", "pdf"),
    ("some-scenes", "convert --scenes 1-2 {source} {output}", "fdx"),
    ("into", "convert --to md --into {folder}/media {source}", None),
    ("dry", "notes {source} --make comments --dry-run", None),
] + [("as-" + name, "convert --from %s {source} {output}" % name, "rtf")
     for name in ("txt", "rtf", "fdx", "html", "md")
] + [(name, name + " {source}", None) for name in (
    "info", "info --json", "count", "count --with-comments --with-footnotes", "notes",
    "notes --json", "links", "links --json", "pages", "pages --json")]


def commands(kind, own):
    """All that documents of a kind, of the suffix `own`, go through: first what converts it, then the
    others."""
    if kind == "markup":
        # Its words stand in codes until these are read.
        return ([made("read-" + suffix, "markup --read {source} -o {output}", suffix)
                 for suffix in OUTPUTS]
                + [made("read-anywhere", "markup --read --media anywhere {source} -o {output}",
                        "rtf")])
    all_commands = [made(suffix, "convert {source} {output}", suffix) for suffix in OUTPUTS]
    for table, judged in ((CHANGES, "qn"), (WITHOUT_NOTES, "q"), (OTHERS, "")):
        all_commands += [made(name, words, own if suffix == "same" else suffix, judged)
                         for name, words, suffix in table]
    if kind == "md":
        all_commands.append(made("smart", "convert --smart {source} {output}", "rtf"))
    return all_commands


def made(name, words, suffix, judged="qn"):
    arguments = words.split(" ")
    # An empty word is a blank in an argument, as "_" is.
    return Command(name, [argument.replace("_", " ") if argument == "[_]" else argument
                          for argument in arguments if argument], suffix, judged,
                   2 if name.startswith("append") else 1,
                   name.startswith(("inline", "make", "write", "endnotes", "enclose")))
