# SPDX-License-Identifier: MIT
"""The words that a reader of an output sees: those of its text in order, and those of its notes.

A word that two notes share is cut between letters, with the marks of a note in between; one may be
half bold. So whatever is no text is taken out, and contents of notes are put at the end.
"""

import html
import re
import shutil
import subprocess
import zipfile
from xml.etree import ElementTree

from mixtures.mixture import WORD

RTF_TOKEN = re.compile(r"\\bin(\d+) ?|\\'(..)|\\\*|([{}])|\\([a-z]+)(-?\d*) ?|([^\\{}\r\n]+)|\\(.)|.",
                       re.S)
RTF_HIDDEN = {"fonttbl", "colortbl", "stylesheet", "info", "pict", "fldinst", "header", "footer",
              "listtext", "bkmkstart", "bkmkend", "atrfstart", "atrfend", "atnid", "atnauthor",
              "atnref", "atndate", "listtable", "listoverridetable", "generator", "mvrprops",
              "mvrnote", "mvrdefaults", "mvrframe", "mvrframeend", "nesttableprops"}
RTF_NOTES = {"footnote", "annotation"}
RTF_BLANKS = {"par", "line", "tab", "cell", "row", "nestcell", "sect", "page"}
ODT_NAMESPACES = {name: "urn:oasis:names:tc:opendocument:xmlns:%s:1.0" % name
                  for name in ("office", "text", "table")}
ODT_PLACES = {"text", "section", "table-cell"}
ODT_PARENTS = {"table-row": {"table", "table-header-rows"}, "table-cell": {"table-row"},
               "table": ODT_PLACES, "list": ODT_PLACES | {"list-item"}, "list-item": {"list"},
               "p": ODT_PLACES | {"list-item", "note-body", "annotation", "text-box"}}


def visible_text(path, suffix):
    """What a reader sees, the contents of notes behind the text, in small letters."""
    if suffix == "pdf":
        return text_of_pdf(path).lower()
    if suffix == "odt":
        with zipfile.ZipFile(path) as archive:
            text = without_stray_parts(archive.read("content.xml"))
        return text_of_tags(text, r"<office:annotation[ >].*?</office:annotation>|"
                            r"<text:note[ >].*?</text:note>").lower()
    with open(path, "rb") as file:
        text = file.read().decode("latin-1" if suffix == "rtf" else "utf-8", "replace")
    return READERS.get(suffix, lambda text: text)(text).lower()


def words(text):
    return WORD.findall(text)


def parted(text):
    """A function that tells whether a word stands in the text in parts, notes in between."""
    first = set(re.findall(r"[qn]\d*(?![a-z0-9])", text))
    # The number of an end note may follow.
    middle = {digits[:end] for digits in re.findall(r"(?<![a-z0-9])\d+(?![a-z])", text)
              for end in range(1, len(digits) + 1)}
    last = set(re.findall(r"(?<![a-z0-9])\d*z", text))

    def is_parted(word):
        ends = {at for at in range(1, len(word)) if word[:at] in first}
        for at in range(1, len(word)):
            if at in ends:
                ends |= {end for end in range(at + 1, len(word)) if word[at:end] in middle}
        return any(word[end:] in last for end in ends)
    return is_parted


def without_brackets(text):
    """Text that holds notes in brackets, without them: words that they part are whole again."""
    for _ in range(12):
        text, count = re.subn(r" ?\[[^\[\]]*\]", "", text)
        if not count:
            break
    return text


def text_of_tags(text, notes):
    contents = re.findall(notes, text, re.S)
    text = re.sub(notes, "", text, flags=re.S) + "\n" + "\n".join(contents)
    text = re.sub(r"</(p|text:p|Paragraph|td|li|text:h)>|<br */?>", "\n", text)
    return html.unescape(re.sub(r"<[^>]*>", "", text, flags=re.S))


def without_stray_parts(data):
    """ODT without what stands where readers look for none of it, such as a cell in a cell."""
    for prefix, namespace in ODT_NAMESPACES.items():
        ElementTree.register_namespace(prefix, namespace)
    root = ElementTree.fromstring(data)
    open_elements = [root]
    while open_elements:
        parent = open_elements.pop()
        kind = short_name(parent)
        for child in list(parent):
            if kind in ODT_PARENTS.get(short_name(child), {kind}):
                open_elements.append(child)
            else:
                parent.remove(child)
    return ElementTree.tostring(root, encoding="unicode")


def short_name(element):
    return element.tag.rpartition("}")[2]


def text_of_html(text):
    return text_of_tags(re.sub(r"<head>.*?</head>", "", text, flags=re.S), "$^")


def text_of_fdx(text):
    """What runs hold. Notes in notes leave their outer ones in pieces, each of which counts."""
    text = re.sub(r"<!\[CDATA\[(.*?)\]\]>", lambda match: html.escape(match.group(1)), text,
                  flags=re.S)
    contents = []
    inner = re.compile(r"<ScriptNote\b[^>]*(?<!/)>((?:(?!<ScriptNote\b).)*?)</ScriptNote>", re.S)
    while inner.search(text):
        contents += inner.findall(text)
        text = inner.sub("", text)
    shown = re.findall(r"<Text\b[^>]*(?<!/)>(.*?)</Text>|(</Paragraph>)",
                       text + "\n" + "\n".join(contents), re.S)
    return text_of_tags("".join(run + end for run, end in shown), "$^")


def text_of_markdown(text):
    contents = []
    inner = re.compile(r"\{>>((?:(?!\{>>).)*?)<<\}", re.S)
    while inner.search(text):
        contents += inner.findall(text)
        text = inner.sub("", text)
    text = re.sub(r"\{==|==\}|(?<!\\)\[\^\w+\](?!:)|(?<!\\)</?[a-z]+[^<>\n]*>", "", text)
    return re.sub(r"\\(?=[^\w\s])|[*`~]|(?<!\w)_|_(?!\w)", "", text) + "\n" + "\n".join(contents)


def text_of_bbcode(text):
    return re.sub(r"\[/?(?:[bius]|strike|url|email|color|list|quote|code|\*)(=[^\]]*)?\]", "", text)


def text_of_rtf(text):
    """A reader of RTF as it is written here: notes go into texts of their own."""
    texts = [[]]
    groups = []  # the text that each open group writes to, and whether it is hidden
    target, is_hidden = texts[0], False
    index = 0
    while index < len(text):
        token = RTF_TOKEN.match(text, index)
        index = token.end() + int(token.group(1) or 0)
        code, brace, word, plain, sign = token.group(2, 3, 4, 6, 7)
        if brace == "{":
            groups.append((target, is_hidden))
        elif brace == "}" and groups:
            target, is_hidden = groups.pop()
        elif word in RTF_NOTES:
            texts.append([])
            target, is_hidden = texts[-1], False
        elif word in RTF_HIDDEN:
            is_hidden = True
        elif not is_hidden:
            is_sign = code or (sign and sign in "{}\\")
            target.append("\n" if word in RTF_BLANKS else "?" if is_sign else plain or "")
    return "\n".join("".join(pieces) for pieces in texts)


def can_read(suffix):
    return suffix != "pdf" or (shutil.which("pdftotext") and shutil.which("qpdf"))


def text_of_pdf(path):
    """Without blanks: lines end within words, and letters may stand far apart."""
    drawn = subprocess.run(["pdftotext", "-raw", path, "-"], capture_output=True, check=False).stdout
    plain = subprocess.run(["qpdf", "--qdf", "--object-streams=disable", path, "-"],
                           capture_output=True, check=False).stdout
    contents = b" ".join(re.findall(rb"/Contents \(((?:\\.|[^\\)])*)\)", plain, re.S))
    contents += b" ".join(bytes.fromhex(text.decode()) for text in
                          re.findall(rb"/Contents <((?:[0-9a-f]{2})*)>", plain))
    contents = re.sub(rb"\\[0-7]{3}|\0", b"", contents).decode("latin-1")
    return re.sub(r"[\s\u00ad]+", "", drawn.decode("utf-8", "replace")) + "\n" + contents


READERS = {"rtf": text_of_rtf, "fdx": text_of_fdx, "html": text_of_html, "md": text_of_markdown,
           "bbcode": text_of_bbcode}
