# SPDX-License-Identifier: MIT
"""Whether an output is whole: what is wrong with it, or nothing."""

import html.parser
import re
import shutil
import subprocess
import zipfile
from xml.parsers import expat

RTF_TOKEN = re.compile(rb"\\bin(\d+) ?|\\[\\{}]|\\'..|([{}])|\\[a-z]+-?\d*|[^\\{}]+|\\.", re.S)


def fault_of(path, suffix):
    """What is wrong with the file, as a line, or an empty one."""
    with open(path, "rb") as file:
        data = file.read()
    if suffix in ("txt", "md", "bbcode", "fdx", "html"):
        try:
            data.decode("utf-8")
        except UnicodeDecodeError as error:
            return "no UTF-8: %s" % error
    check = {"rtf": fault_of_rtf, "fdx": fault_of_xml, "html": fault_of_html}.get(suffix)
    if check:
        return check(data)
    return {"odt": fault_of_odt, "pdf": fault_of_pdf}.get(suffix, lambda path: "")(path)


def fault_of_xml(data):
    try:
        expat.ParserCreate().Parse(data, True)
        return ""
    except expat.ExpatError as error:
        return "no XML: %s" % error


def fault_of_rtf(data):
    if not data.startswith(b"{\\rtf1"):
        return "no RTF"
    depth = index = 0
    while index < len(data):
        token = RTF_TOKEN.match(data, index)
        if not token:
            return "not of RTF: %r" % data[index:index + 10]
        index = token.end() + int(token.group(1) or 0)
        depth += {b"{": 1, b"}": -1}.get(token.group(2), 0)
        if depth == 0 and data[index:].strip(b"\r\n \0"):
            return "RTF ends at byte %d" % index
    return "%d groups of RTF are open" % depth if depth else ""


class OpenElements(html.parser.HTMLParser):
    WITHOUT_END = {"meta", "br", "hr", "img", "col", "link", "input"}

    def __init__(self):
        super().__init__()
        self.open = []
        self.fault = ""

    def handle_starttag(self, tag, attributes):
        self.note_names(tag, attributes)
        if tag not in self.WITHOUT_END and tag not in ("li", "ul", "ol"):
            self.open.append(tag)

    def handle_startendtag(self, tag, attributes):
        self.note_names(tag, attributes)

    def note_names(self, tag, attributes):
        if len({name for name, _ in attributes}) < len(attributes):
            self.fault = self.fault or "<%s> has an attribute twice" % tag

    def handle_endtag(self, tag):
        if tag in self.WITHOUT_END or self.fault:
            return
        if not self.open or self.open.pop() != tag:
            self.fault = "</%s> closes nothing" % tag


def fault_of_html(data):
    """Qt closes the items of lists in each other as it likes, so that they count as if closed."""
    text = re.sub(r"</(li|ul|ol)>", "", data.decode("utf-8"))
    elements = OpenElements()
    elements.feed(text)
    elements.close()
    return elements.fault or ("<%s> is open" % elements.open[-1] if elements.open else "")


def fault_of_odt(path):
    try:
        with zipfile.ZipFile(path) as archive:
            if archive.testzip():
                return "%s is damaged in ODT" % archive.testzip()
            for name in archive.namelist():
                fault = fault_of_xml(archive.read(name)) if name.endswith(".xml") else ""
                if fault:
                    return name + ": " + fault
    except (zipfile.BadZipFile, OSError) as error:
        return "no ODT: %s" % error
    return ""


def fault_of_pdf(path):
    with open(path, "rb") as file:
        if not file.read(5) == b"%PDF-":
            return "no PDF"
    if not shutil.which("qpdf"):
        return ""
    ended = subprocess.run(["qpdf", "--check", path], capture_output=True, check=False)
    return "PDF: " + ended.stderr.decode("utf-8", "replace")[-200:] if ended.returncode else ""
