# SPDX-License-Identifier: MIT
"""Inputs of hostile shapes, each as a function of its size in bytes; see scripts/growth."""

# What the tool is called with: the suffix of the input, and the arguments.
COMMANDS = {
    "rtf": ("rtf", ["convert", "{source}", "{folder}/out.rtf"]),
    "rtf-html": ("rtf", ["convert", "{source}", "{folder}/out.html"]),
    "rtf-bbcode": ("rtf", ["convert", "{source}", "{folder}/out.bbcode"]),
    "rtf-fdx": ("rtf", ["convert", "{source}", "{folder}/out.fdx"]),
    "rtf-inline": ("rtf", ["convert", "--notes", "inline", "{source}", "{folder}/out.txt"]),
    "rtf-endnotes": ("rtf", ["endnotes", "{source}", "-o", "{folder}/out.rtf"]),
    "rtf-count": ("rtf", ["count", "{source}"]),
    "rtf-pdf": ("rtf", ["convert", "{source}", "{folder}/out.pdf"]),
    "rtf-odt": ("rtf", ["convert", "{source}", "{folder}/out.odt"]),
    "rtf-notes": ("rtf", ["notes", "{source}"]),
    "rtf-md": ("rtf", ["convert", "{source}", "{folder}/out.md"]),
    "rtf-margin": ("rtf", ["convert", "--notes", "margin", "{source}", "{folder}/out.pdf"]),
    "rtf-inspector": ("rtf", ["notes", "--make", "inspector", "--trim", "{source}", "-o",
                              "{folder}/out.rtf"]),
    "rtf-append": ("rtf", ["append", "{source}", "{source}", "-o", "{folder}/out.rtf"]),
    "fdx": ("fdx", ["convert", "{source}", "{folder}/out.fdx"]),
    "fdx-pdf": ("fdx", ["convert", "{source}", "{folder}/out.pdf"]),
    "fdx-rtf": ("fdx", ["convert", "{source}", "{folder}/out.rtf"]),
    "fdx-pages": ("fdx", ["pages", "{source}"]),
    "html": ("html", ["convert", "{source}", "{folder}/out.rtf"]),
    "html-html": ("html", ["convert", "{source}", "{folder}/out.html"]),
    "html-bbcode": ("html", ["convert", "{source}", "{folder}/out.bbcode"]),
    "html-odt": ("html", ["convert", "{source}", "{folder}/out.odt"]),
    "html-pdf": ("html", ["convert", "{source}", "{folder}/out.pdf"]),
    "md-md": ("md", ["convert", "{source}", "{folder}/out.md"]),
    "md-html": ("md", ["convert", "{source}", "{folder}/out.html"]),
    "md-pdf": ("md", ["convert", "{source}", "{folder}/out.pdf"]),
    "md": ("md", ["convert", "{source}", "{folder}/out.rtf"]),
    "md-append": ("md", ["append", "--page-break", "{source}", "{source}", "-o",
                         "{folder}/out.md"]),
    "md-book": ("md", ["endnotes", "--style", "ebook", "{source}", "-o", "{folder}/out.html",
                       "--notes-out", "{folder}/out.xhtml"]),
    "txt": ("txt", ["convert", "{source}", "{folder}/out.rtf"]),
    "txt-fdx": ("txt", ["convert", "{source}", "{folder}/out.fdx"]),
    "txt-html": ("txt", ["convert", "{source}", "{folder}/out.html"]),
    "txt-pdf": ("txt", ["convert", "{source}", "{folder}/out.pdf"]),
    "txt-markup": ("txt", ["markup", "--read", "{source}", "-o", "{folder}/out.rtf"]),
    "txt-endnotes": ("txt", ["endnotes", "{source}", "-o", "{folder}/out.rtf"]),
    "txt-replace": ("txt", ["replace", "--find", "a", "--with", "bb", "{source}", "-o",
                            "{folder}/out.txt"]),
    "txt-count": ("txt", ["count", "{source}"]),
}


def repeated(head, part, tail=""):
    """Parts, numbered where they have a %d, until the size is reached."""
    def make(size):
        numbered = "%d" in part
        pieces = []
        length = number = 0
        while length < size:
            piece = part.replace("%d", str(number)) if numbered else part
            pieces.append(piece)
            length += len(piece)
            number += 1
        return (head + "".join(pieces) + tail).encode("utf-8", "surrogatepass")
    return make


def nested(head, opening, inner, closing, tail=""):
    """Parts in each other until the size is reached."""
    def make(size):
        depth = max(1, size // (len(opening) + len(closing)))
        return (head + opening * depth + inner + closing * depth + tail).encode()
    return make


def in_turn(head, parts, tail=""):
    """Each of the parts in turn, numbered where they have a %d."""
    def make(size):
        pieces = []
        length = 0
        while length < size:
            pieces.append(parts[len(pieces) % len(parts)].replace("%d", str(len(pieces))))
            length += len(pieces[-1])
        return (head + "".join(pieces) + tail).encode()
    return make


def halves(head, first, middle, second, tail=""):
    """Many of one thing, then many of another that looks through the first."""
    def make(size):
        one, other = repeated("", first)(size // 2), repeated("", second)(size // 2)
        return head.encode() + one + middle.encode() + other + tail.encode()
    return make


R = "{\\rtf1\\ansi "
RF = "{\\rtf1\\ansi{\\fonttbl{\\f0 Serif;}}"
LIST = ("{\\*\\listtable{\\list" + "{\\listlevel\\levelnfc0}" * 9 + "\\listid1}}"
        "{\\*\\listoverridetable{\\listoverride\\listid1\\ls1}}")
ROW = "\\trowd\\cellx1000\\cellx2000 a\\intbl\\cell b\\cell\\row "

RTF = {
    "open groups": repeated(R, "{"),
    "closed groups": repeated(R, "{}", "}"),
    "closing braces": repeated(R, "}"),
    "fonts used": halves(R + "{\\fonttbl", "{\\f%d F%d;}", "}", "{\\f%d a}", "}"),
    "nested groups": nested(R, "{", "a", "}", "}"),
    "nested formats": nested(R, "{\\b a", "a", "}", "}"),
    "nested destinations": nested(R, "{\\*\\x", "a", "}", "}"),
    "nested fields": nested(R, "{\\field{\\fldinst HYPERLINK \"x\"}{\\fldrslt ", "a", "}}", "}"),
    "nested footnotes": nested(R, "a{\\footnote ", "a", "}", "}"),
    "nested annotations": nested(R, "a{\\*\\annotation ", "a", "}", "}"),
    "nested shapes": nested(R, "{\\shp{\\shptxt ", "a", "}}", "}"),
    "nested pictures": nested(R, "{\\pict ", "00", "}", "}"),
    "nested tables": nested(R, "\\itap2{\\nestcell{\\*\\nesttableprops\\trowd\\cellx9\\nestrow}",
                            "a", "}", "}"),
    "nested unicode destinations": nested(R, "{\\upr{a}{\\*\\ud ", "a", "}}", "}"),
    "words": repeated(R, "\\b\\i\\ul ", "a}"),
    "unknown words": repeated(R, "\\xyzzy%d ", "a}"),
    "long word": repeated(R + "\\", "a", " }"),
    "long number": repeated(R + "\\fs", "9", " a}"),
    "numbers": repeated(R, "\\fs%d a", "}"),
    "colours": repeated(R + "{\\colortbl;", "\\red1\\green2\\blue3;", "}a}"),
    "colours used": halves(R + "{\\colortbl;", "\\red%d;", "}", "\\cf%d a", "}"),
    "fonts": repeated(R + "{\\fonttbl", "{\\f%d Serif%d;}", "}a}"),
    "fonts of one number": repeated(R + "{\\fonttbl", "{\\f0 Serif%d;}", "}a}"),
    "fonts used": halves(R + "{\\fonttbl", "{\\f%d S%d;}", "}", "\\f%d a", "}"),
    "font without end": repeated(R + "{\\fonttbl{\\f0 ", "a"),
    "styles": repeated(R + "{\\stylesheet", "{\\s%d s%d;}", "}a}"),
    "styles on each other": repeated(R + "{\\stylesheet", "{\\s%d\\sbasedon%d s;}", "}a}"),
    "styles used": halves(R + "{\\stylesheet", "{\\s%d\\b s;}", "}", "\\pard\\s%d a\\par", "}"),
    "styles in a circle": repeated(R + "{\\stylesheet{\\s1\\sbasedon2 a;}{\\s2\\sbasedon1 b;}}",
                                   "\\pard\\s1 a\\par\\pard\\s2 b\\par", "}"),
    "lists": repeated(R + "{\\*\\listtable", "{\\list{\\listlevel\\levelnfc0}\\listid%d}", "}a}"),
    "lists used": halves(R + "{\\*\\listtable", "{\\list{\\listlevel\\levelnfc0}\\listid%d}",
                         "}", "\\pard\\ls%d a\\par", "}"),
    "levels": repeated(R + "{\\*\\listtable{\\list", "{\\listlevel\\levelnfc0}", "\\listid1}}a}"),
    "overrides": repeated(R + "{\\*\\listoverridetable", "{\\listoverride\\listid1\\ls%d}",
                          "}a}"),
    "overrides of one number": repeated(R + "{\\*\\listoverridetable",
                                        "{\\listoverride\\listid%d\\ls1}", "}\\ls1 a}"),
    "old lists": repeated(R, "{\\pn\\pnlvlbody{\\pntxta .}}a\\par", "}"),
    "list texts": repeated(R, "{\\listtext\\tab 1.}a\\par", "}"),
    "level texts": repeated(R + "{\\*\\listtable{\\list{\\listlevel{\\leveltext ", "\\'01.",
                            ";}}\\listid1}}a}"),
    "paragraphs": repeated(R, "a\\par ", "}"),
    "empty paragraphs": repeated(R, "\\par", "}"),
    "line breaks": repeated(R, "\\line", "}"),
    "page breaks": repeated(R, "\\page a\\par", "}"),
    "sections": repeated(R, "\\sect\\sectd a", "}"),
    "tabs": repeated(R + "\\pard", "\\tx%d", " a}"),
    "tabs in a paragraph": repeated(R, "\\tab ", "}"),
    "paragraph formats": repeated(R, "\\pard\\li%d a\\par", "}"),
    "character formats": repeated(R, "{\\fs2%d a}", "}"),
    "one paragraph of formats": repeated(R, "{\\b a}{\\i b}", "}"),
    "text": repeated(R, "abc def ", "}"),
    "one word": repeated(R, "a", "}"),
    "hexadecimal": repeated(R, "\\'e9", "}"),
    "hexadecimal of two bytes": repeated(R + "\\ansicpg932 ", "\\'81\\'40", "}"),
    "bad hexadecimal": repeated(R, "\\'zz", "}"),
    "unicode": repeated(R, "\\u1087?", "}"),
    "unicode without fallback": repeated(R + "\\uc0", "\\u1087", "}"),
    "unicode with long fallback": repeated(R + "\\uc99", "\\u1087?", "}"),
    "fallback counts": repeated(R, "\\uc%d\\u1087?", "}"),
    "fallback of groups": repeated(R + "\\uc1000000\\u1087 ", "{a}", "}"),
    "row of many pages": halves(R + "\\trowd", "\\cellx%d0", "\\intbl ", "\\sb200000 a\\par ",
                                "\\cell\\row}"),
    "no paper": repeated(R + "\\paperw1\\paperh9 ", "a\\par ", "}"),
    "pages of an inch": repeated(R + "\\paperw1440\\paperh1440 ", "{\\b a}\\par ", "}"),
    "half pairs": repeated(R, "\\u-10179?", "}"),
    "bytes": repeated(R, "\\bin3 abc", "}"),
    "bytes without end": repeated(R, "\\bin2000000000 a"),
    "code pages": repeated(R, "\\ansicpg125%d\\'e9", "}"),
    "character sets": repeated(RF, "{\\f0\\fcharset%d\\'e9}", "}"),
    "fields": repeated(R, "{\\field{\\fldinst HYPERLINK \"x%d\"}{\\fldrslt a}}", "}"),
    "fields of one target": repeated(R, "{\\field{\\fldinst HYPERLINK \"x\"}{\\fldrslt a}}", "}"),
    "fields without result": repeated(R, "{\\field{\\fldinst PAGE}}", "}"),
    "long field": repeated(R + "{\\field{\\fldinst HYPERLINK \"", "x", "\"}{\\fldrslt a}}}"),
    "bookmarks": repeated(R, "{\\*\\bkmkstart b%d}a{\\*\\bkmkend b%d}", "}"),
    "bookmarks of one name": repeated(R, "{\\*\\bkmkstart b}a{\\*\\bkmkend b}", "}"),
    "bookmarks without end": repeated(R, "{\\*\\bkmkstart b%d}a", "}"),
    "footnotes": repeated(R, "a{\\footnote b}", "}"),
    "footnotes apart": repeated(R, "a{\\footnote b} ", "}"),
    "footnotes in one word": repeated(R + "word", "{\\footnote b}", "}"),
    "long footnote": repeated(R + "a{\\footnote ", "b\\par ", "}}"),
    "annotations": repeated(R, "a {\\*\\annotation b}", "}"),
    "annotations in one word": repeated(R + "word", "{\\*\\annotation b}", "}"),
    "annotations with ranges": repeated(
        R, "{\\*\\atrfstart %d}a{\\*\\atrfend %d}{\\*\\annotation{\\*\\atnref %d}b}", "}"),
    "overlapping annotations": halves(
        R, "{\\*\\atrfstart %d}a ", "", "{\\*\\atrfend %d}{\\*\\annotation{\\*\\atnref %d}b}",
        "}"),
    "annotations of one range": repeated(
        R, "{\\*\\atrfstart 1}a{\\*\\atrfend 1}{\\*\\annotation{\\*\\atnref 1}b}", "}"),
    "authors": repeated(R, "{\\*\\atnid x%d}{\\*\\atnauthor y%d}a{\\*\\annotation b}", "}"),
    "notes far from words": repeated(R, "\\par{\\footnote b}", "}"),
    "notes behind blanks": repeated(R + "a", " {\\footnote b}", "}"),
    "rows": repeated(R, ROW, "}"),
    "rows of their own widths": repeated(R, "\\trowd\\cellx%d a\\intbl\\cell\\row ", "}"),
    "wide row": repeated(R + "\\trowd", "\\cellx%d0", "\\intbl a\\cell\\row}"),
    "wide row of cells": halves(R + "\\trowd", "\\cellx%d0", "\\intbl ", "a\\cell ", "\\row}"),
    "rows and a wide one": halves(R, "\\trowd\\cellx9 a\\intbl\\cell\\row ", "\\trowd",
                                  "\\cellx%d0", "\\intbl a\\cell\\row}"),
    "merged cells": repeated(R, "\\trowd\\clmgf\\cellx1\\clmrg\\cellx2 a\\intbl\\cell\\cell\\row ",
                             "}"),
    "cells merged downwards": repeated(
        R, "\\trowd\\clvmrg\\cellx1\\cellx2 a\\intbl\\cell\\cell\\row ", "}"),
    "cells without row": repeated(R + "\\intbl ", "a\\cell ", "}"),
    "rows without cells": repeated(R, "\\trowd\\row ", "}"),
    "cell formats": repeated(R + "\\trowd", "\\clbrdrt\\brdrs\\clcbpat1\\cellx%d0", " a}"),
    "tables": repeated(R, ROW + "\\pard b\\par ", "}"),
    "tables in cells": repeated(
        R, "\\itap2 a\\nestcell{\\*\\nesttableprops\\trowd\\cellx9\\nestrow}\\itap1\\cell"
        "{\\trowd\\cellx9\\row}", "}"),
    "deep table numbers": repeated(R, "\\itap%d a\\nestcell ", "}"),
    "frames": repeated(R, "{\\*\\mvrframe1}a{\\*\\mvrframeend}", "}"),
    "open frames": repeated(R, "{\\*\\mvrframe1}a", "}"),
    "ends of frames": repeated(R, "{\\*\\mvrframeend}a", "}"),
    "pictures": repeated(R, "{\\pict\\pngblip 89504e47}", "}"),
    "long picture": repeated(R + "{\\pict\\pngblip ", "89504e47", "}}"),
    "pictures with size claims": repeated(R, "{\\pict\\dibitmap0\\picw30000\\pich30000 00}", "}"),
    "objects": repeated(R, "{\\object{\\*\\objdata 00}{\\result a}}", "}"),
    "shapes": repeated(R, "{\\shp{\\*\\shpinst{\\shptxt a\\par}}}", "}"),
    "headers": repeated(R, "{\\header a}", "b}"),
    "information": repeated(R + "{\\info", "{\\title a%d}", "}b}"),
    "long title": repeated(R + "{\\info{\\title ", "&<\"", "}}b}"),
    "revisions": repeated(R + "{\\*\\revtbl", "{a%d;}", "}\\deleted b}"),
    "deleted text": repeated(R, "{\\deleted a}b", "}"),
    "hidden text": repeated(R, "{\\v a}b", "}"),
    "symbols of fonts": repeated(R + "{\\fonttbl{\\f0\\fcharset2 Symbol;}}\\f0 ", "\\'61", "}"),
    "exact properties": repeated(R + "{\\*\\mvrprops", "{%d 2001d:1;}", "}a}"),
    "exact properties of one number": repeated(R + "{\\*\\mvrprops", "{1 2001d:%d;}",
                                               "}\\mvrx1 a}"),
    "notes of our own": repeated(R, "a{\\*\\mvrnote %d x}", "}"),
    "codes of footnotes": repeated(R, "\\{\\'5cMvrn_fn=a\\'5cend_Mvrn_fn\\} ", "}"),
    "opening codes": repeated(R, "\\{\\'5cMvrn_fn=", "}"),
    "closing codes": repeated(R, "\\'5cend_Mvrn_fn\\} ", "}"),
    "lists in cells in footnotes": repeated(
        R + LIST, "\\trowd\\cellx3000\\intbl\\ls1{\\listtext 1.}a{\\footnote \\ls1 x\\par"
        "{\\trowd\\cellx900 y\\intbl\\cell\\row}}{\\*\\annotation c}\\cell\\row\\pard ", "}"),
    "items in cells": repeated(
        R + LIST, "\\trowd\\cellx9\\cellx99\\pard\\intbl\\ls1 a\\par b\\cell c\\cell\\row ", "}"),
    "levels of lists in turn": repeated(
        R + LIST, "\\pard\\ls1\\ilvl0 a\\par\\pard\\ls1\\ilvl8 b\\par ", "}"),
    "comments over footnotes": repeated(
        R, "{\\*\\atrfstart %d}a{\\footnote f} b{\\footnote g}{\\*\\atrfend %d}{\\*\\annotation"
        "{\\*\\atnref %d}c} ", "}"),
    "comments that end first": halves(R, "{\\*\\atrfend %d}a ", "", "{\\*\\atrfstart %d}"
                                      "{\\*\\annotation{\\*\\atnref %d}b}", "}"),
    "one comment over rows": repeated(R + "{\\*\\atrfstart 1}", ROW, "{\\*\\atrfend 1}"
                                      "{\\*\\annotation{\\*\\atnref 1}c}}"),
    "fields in fields": repeated(
        R, "{\\field{\\*\\fldinst IF {\\field{\\*\\fldinst PAGE}{\\fldrslt 1}} = 1}{\\fldrslt "
        "{\\field{\\*\\fldinst HYPERLINK \"y%d\"}{\\fldrslt z}}}}", "}"),
    "one field over paragraphs": repeated(
        R + "{\\field{\\*\\fldinst TOC}{\\fldrslt ", "abcdefgh\\par ", "}}}"),
    "text boxes with notes": repeated(R, "a{\\shp{\\*\\shpinst{\\shptxt b{\\footnote c"
                                      "{\\*\\annotation d}}\\par}}} ", "}"),
    "text boxes in headers": repeated(R, "{\\header{\\shp{\\*\\shpinst{\\shptxt b\\par}}}}d\\par ",
                                      "}"),
    "tracked changes": repeated(R + "{\\*\\revtbl{A;}{B;}}", "{\\revised\\revauth1\\revdttm%d a}"
                                "{\\deleted\\revauthdel1 b} ", "}"),
    "formulas": nested(
        R + "{\\mmath{\\*\\moMath", "{\\mf{\\mnum{\\mr a}}{\\mden ", "b", "}}", "}}}"),
    "sets of characters in turn": repeated(
        R + "{\\fonttbl{\\f0\\fcharset128 A;}{\\f1\\fcharset177 C;}}", "\\f0\\'83\\'4a\\f1\\'e0",
        "}"),
    "codes over runs": repeated(
        R, "\\{{\\b \\'5cMvrn}{\\i _fn=}a{\\footnote b}\\'5cend_{\\ul Mvrn_fn}\\} ", "}"),
    "codes over cells": repeated(
        R, "\\trowd\\cellx900\\cellx1800\\intbl x\\{\\'5cMvrn_fn=a\\cell b"
        "\\'5cend_Mvrn_fn\\}\\cell\\row ",
        "}"),
    "parts of tables in turn": in_turn(
        R, ["\\cell ", "\\trowd\\cellx9", "\\row ", "\\nestcell ", "\\intbl a", "\\par ",
            "\\itap3 ", "{\\*\\nesttableprops\\nestrow}", "\\pard "], "}"),
    "carriage returns": repeated(R, "\\\r\n", "}"),
    "null bytes": repeated(R, "\0", "a}"),
    "not RTF": repeated("", "abc"),
}

F = "<FinalDraft DocumentType=\"Script\" Version=\"2\"><Content>"
FE = "</Content></FinalDraft>"
PARAGRAPH = "<Paragraph Type=\"Action\"><Text>a</Text></Paragraph>"
NOTE = "<ScriptNote><Paragraph><Text>n</Text></Paragraph></ScriptNote>"
FDX = {
    "paragraphs": repeated(F, PARAGRAPH, FE),
    "empty paragraphs": repeated(F, "<Paragraph/>", FE),
    "types": repeated(F, "<Paragraph Type=\"T%d\"><Text>a</Text></Paragraph>", FE),
    "runs": repeated(F + "<Paragraph>", "<Text Style=\"Bold\">a</Text><Text>b</Text>",
                     "</Paragraph>" + FE),
    "equal runs": repeated(F + "<Paragraph>", "<Text>a</Text>", "</Paragraph>" + FE),
    "fonts": repeated(F + "<Paragraph>", "<Text Font=\"F%d\" Size=\"%d\">a</Text>",
                      "</Paragraph>" + FE),
    "long text": repeated(F + "<Paragraph><Text>", "a b ", "</Text></Paragraph>" + FE),
    "blanks": repeated(F + "<Paragraph><Text>", " ", "</Text></Paragraph>" + FE),
    "layout between elements": repeated(F, "\n        ", PARAGRAPH + FE),
    "notes": repeated(F, "<Paragraph><Text>word" + NOTE + "</Text></Paragraph>", FE),
    "notes in one run": repeated(F + "<Paragraph><Text>word", NOTE, "</Text></Paragraph>" + FE),
    "notes in one paragraph": repeated(F + "<Paragraph><Text>word</Text>", NOTE,
                                       "</Paragraph>" + FE),
    "notes without words": repeated(F, "<Paragraph>" + NOTE + "</Paragraph>", FE),
    "notes of ranges": halves(
        "<FinalDraft Version=\"5\"><Content>", PARAGRAPH, "</Content><ScriptNotes>",
        "<ScriptNote Range=\"%d,9%d\"><Paragraph><Text>n</Text></Paragraph></ScriptNote>",
        "</ScriptNotes></FinalDraft>"),
    "notes of one range": repeated(
        "<FinalDraft Version=\"5\"><Content>" + PARAGRAPH + "</Content><ScriptNotes>",
        "<ScriptNote Range=\"0,1\"><Paragraph><Text>n</Text></Paragraph></ScriptNote>",
        "</ScriptNotes></FinalDraft>"),
    "notes over dual dialogue": repeated(
        F, "<Paragraph>" + NOTE + "<DualDialogue>" + PARAGRAPH + "<Paragraph>" + NOTE
        + "<Text>b c</Text></Paragraph></DualDialogue><Text>x</Text></Paragraph>", FE),
    "tags": halves("<FinalDraft><TagData><Tags>", "<Tag Id=\"%d\" DefId=\"%d\" Range=\"1,2\"/>",
                   "</Tags><TagDefinitions>", "<TagDefinition Id=\"%d\" Label=\"x\"/>",
                   "</TagDefinitions></TagData><Content>" + PARAGRAPH + FE),
    "revisions": repeated(F, "<Paragraph><Text RevisionID=\"%d\">a</Text>"
                          "<Text RevisionID=\"1\">b</Text></Paragraph>", FE),
    "deep alternatives": repeated(
        F, "<Paragraph>" + "<Alts><Alt><Paragraph>" * 20 + "<Text>b</Text>"
        + "</Paragraph></Alt></Alts>" * 20 + "<Text>a</Text></Paragraph>", FE),
    "speeches": repeated(
        F, "<Paragraph Type=\"Character\"><Text>A</Text></Paragraph><Paragraph Type=\"Dialogue\">"
        "<Text>Words. More.</Text></Paragraph>", FE),
    "one speech": repeated(F + "<Paragraph Type=\"Dialogue\">", "<Text Style=\"Bold\">wo</Text>"
                           "<Text AdornmentStyle=\"-1\">rd. </Text>", "</Paragraph>" + FE),
    "scenes": repeated(
        F, "<Paragraph Type=\"Scene Heading\" Number=\"%d\"><SceneProperties><Summary><Paragraph>"
        "<Text>s</Text></Paragraph></Summary></SceneProperties><Text>A</Text></Paragraph>", FE),
    "codes over runs": repeated(F + "<Paragraph>", "<Text>{\\Mvrn_</Text><Text Style=\"Bold\">fn=a"
                                "\\end_Mvrn_fn} </Text>", "</Paragraph>" + FE),
    "long note": repeated(F + "<Paragraph><Text>w</Text><ScriptNote>", PARAGRAPH,
                          "</ScriptNote></Paragraph>" + FE),
    "nested notes": nested(F + "<Paragraph>", "<ScriptNote><Paragraph>", "<Text>a</Text>",
                           "</Paragraph></ScriptNote>", "</Paragraph>" + FE),
    "dual dialogue": repeated(F, "<Paragraph><DualDialogue>" + PARAGRAPH
                              + "</DualDialogue></Paragraph>", FE),
    "nested dual dialogue": nested(F, "<Paragraph><DualDialogue>", PARAGRAPH,
                                   "</DualDialogue></Paragraph>", FE),
    "title page": repeated("<FinalDraft><Content/><TitlePage><Content>", PARAGRAPH,
                           "</Content></TitlePage></FinalDraft>"),
    "title pages": repeated("<FinalDraft><Content/>", "<TitlePage><Content>" + PARAGRAPH
                            + "</Content></TitlePage>", "</FinalDraft>"),
    "contents": repeated("<FinalDraft>", "<Content>" + PARAGRAPH + "</Content>", "</FinalDraft>"),
    "element settings": repeated("<FinalDraft><Content/>",
                                 "<ElementSettings Type=\"T%d\"><FontSpec Size=\"12\"/>"
                                 "</ElementSettings>", "</FinalDraft>"),
    "settings and types": halves("<FinalDraft>", "<ElementSettings Type=\"T%d\"/>", "<Content>",
                                 "<Paragraph Type=\"T%d\"><Text>a</Text></Paragraph>", FE),
    "settings of one type": repeated("<FinalDraft><Content/>",
                                     "<ElementSettings Type=\"Action\"/>", "</FinalDraft>"),
    "page layouts": repeated("<FinalDraft><Content/>", "<PageLayout TopMargin=\"72\"/>",
                             "</FinalDraft>"),
    "unknown elements": repeated(F, "<Unknown><A/></Unknown>", FE),
    "unknown element names": repeated(F, "<U%d/>", FE),
    "fonts of runs": repeated(F + "<Paragraph>", "<Text Font=\"F%d\">a</Text>",
                              "</Paragraph>" + FE),
    "nested unknown elements": nested(F, "<U>", "a", "</U>", FE),
    "attributes": repeated(F + "<Paragraph", " a%d=\"x\"", "/>" + FE),
    "attributes below the limit": repeated(
        F, "<Paragraph " + " ".join("a%02d=\"\"" % n for n in range(90)) + "/>", FE),
    "long attribute": repeated(F + "<Paragraph Type=\"", "a", "\"/>" + FE),
    "attribute names": repeated(F, "<Paragraph a%d=\"\"/>", FE),
    "references": repeated(F + "<Paragraph><Text>", "&amp;&#65;", "</Text></Paragraph>" + FE),
    "references in attributes": repeated(F + "<Paragraph Type=\"", "&amp;", "\"/>" + FE),
    "entities": repeated("<!DOCTYPE F [", "<!ENTITY e%d \"x\">", "]>" + F + FE),
    "entities used": halves("<!DOCTYPE F [", "<!ENTITY e%d \"x\">",
                            "]>" + F + "<Paragraph><Text>", "&e%d;", "</Text></Paragraph>" + FE),
    "one entity used": repeated("<!DOCTYPE F [<!ENTITY e \"xxxx\">]>" + F + "<Paragraph><Text>",
                                "&e;", "</Text></Paragraph>" + FE),
    "entities in entities": repeated("<!DOCTYPE F [<!ENTITY e0 \"x\">",
                                     "<!ENTITY f%d \"&e0;&e0;\">", "]>" + F + "&f0;" + FE),
    "long entity": repeated("<!DOCTYPE F [<!ENTITY e \"", "x", "\">]>" + F + "&e;" + FE),
    "attribute declarations": repeated("<!DOCTYPE F [", "<!ATTLIST Paragraph a%d CDATA \"x\">",
                                       "]>" + F + PARAGRAPH + FE),
    "default attributes": halves("<!DOCTYPE F [<!ATTLIST Paragraph ", "a%d CDATA \"x\" ",
                                 ">]>" + F, "<Paragraph/>", FE),
    "element declarations": repeated("<!DOCTYPE F [", "<!ELEMENT a%d ANY>", "]>" + F + FE),
    "notations": repeated("<!DOCTYPE F [", "<!NOTATION n%d SYSTEM \"x\">", "]>" + F + FE),
    "document type without end": repeated("<!DOCTYPE F [", "<!-- -->"),
    "open brackets": repeated("<!DOCTYPE F ", "["),
    "quotes in the document type": repeated("<!DOCTYPE F [", "<!ENTITY e%d '\"'>",
                                            "]>" + F + FE),
    "comments": repeated(F, "<!-- a -->", FE),
    "long comment": repeated(F + "<!--", "a ", "-->" + FE),
    "comment without end": repeated(F + "<!--", "a-"),
    "character data": repeated(F + "<Paragraph><Text>", "<![CDATA[a]]>",
                               "</Text></Paragraph>" + FE),
    "character data without end": repeated(F + "<![CDATA[", "]]"),
    "instructions": repeated(F, "<?p a?>", FE),
    "open elements": repeated(F, "<a>"),
    "end tags": repeated(F, "</a>"),
    "angle brackets": repeated(F, "<"),
    "ampersands": repeated(F, "&"),
    "namespaces": repeated(F, "<a:b xmlns:a=\"x%d\"/>", FE),
    "text beside elements": repeated(F + "<Paragraph>", "a<Text>b</Text>", "</Paragraph>" + FE),
    "line breaks": repeated(F + "<Paragraph><Text>", "a\n", "</Text></Paragraph>" + FE),
    "letters beyond the first plane": repeated(F + "<Paragraph><Text>", "\U0001F600",
                                               "</Text></Paragraph>" + FE),
    "not XML": repeated("", "abc"),
}

H = "<html><body>"
HTML = {
    "paragraphs": repeated(H, "<p>a</p>"),
    "open paragraphs": repeated(H, "<p>a"),
    "spans": repeated(H + "<p>", "<span style='color:red'>a</span>b"),
    "nested spans": nested(H, "<span>", "a", "</span>"),
    "open spans": repeated(H, "<span>a"),
    "nested lists": nested(H, "<ul><li>", "a", "</li></ul>"),
    "list items": repeated(H + "<ul>", "<li>a</li>"),
    "lists": repeated(H, "<ul><li>a</li></ul>"),
    "nested divisions": nested(H, "<div>", "a", "</div>"),
    "nested tables": nested(H, "<table><tr><td>", "a", "</td></tr></table>"),
    "tables": repeated(H, "<table><tr><td>a</td></tr></table>"),
    "rows": repeated(H + "<table>", "<tr><td>a</td><td>b</td></tr>"),
    "cells": repeated(H + "<table><tr>", "<td>a</td>"),
    "cells over many columns": repeated(H, "<table><tr><td colspan=999>a</td></tr></table>"),
    "cells over many rows": repeated(
        H + "<table>", "<tr><td colspan=999 rowspan=999>a</td></tr>", "</table>"),
    "rows and a wide cell": repeated(H + "<table>", "<tr><td>a</td></tr>",
                                     "<tr><td colspan=1000>b</td></tr></table>"),
    "spans over rows": repeated(H + "<table>", "<tr><td rowspan=1000>a</td></tr>", "</table>"),
    "rows and a wide row": halves(H + "<table>", "<tr><td>a</td></tr>", "<tr>", "<td>b</td>",
                                  "</tr></table>"),
    "cells of odd spacing": repeated(
        H, "<table cellspacing=-1e308 cellpadding=-%d><tr><td style='padding:1e%dpx'>a</table>"),
    "text in tables": repeated(H + "<table><tr><td>" * 10, "<p>a"),
    "cells in tables": repeated(H + "<table><tr><td>" * 7, "<tr><td>a"),
    "deep lists": repeated(H, "<ul style='-qt-list-indent:%d99999'><li>a</ul>"),
    "halves of pairs": repeated(H, "<b>&#xD83D;</b>a"),
    "column groups": repeated(H + "<table>", "<col span=999>", "<tr><td>a</td></tr></table>"),
    "pictures behind paragraphs": repeated(H, "<p style='background:url(%d)'>a"),
    "style rules": repeated("<style>", "p.c%d{color:red}", "</style>" + H + "<p>a</p>"),
    "style rules and paragraphs": halves("<style>", "p.c%d{color:red}", "</style>" + H,
                                         "<p class=c%d>a</p>"),
    "style rules of any element": halves("<style>", "*{color:red}", "</style>" + H, "<p>a"),
    "selectors": halves("<style>", ".c%d,", "p{color:red}</style>" + H, "<p>a"),
    "deep selectors": halves("<style>", "div p ", "{color:red}</style>" + H, "<div><p>a</div>"),
    "style sheets": repeated("", "<style>p{color:red}</style>", H + "a"),
    "declarations": repeated(H + "<p style='", "color:red;", "'>a</p>"),
    "style without end": repeated("<style>", "p{"),
    "comments in styles": repeated("<style>", "/**/", "</style>a"),
    "classes": repeated(H + "<p class='", "c%d ", "'>a</p>"),
    "attributes": repeated(H + "<p", " a%d='x'", ">a</p>"),
    "long attribute": repeated(H + "<p title='", "a", "'>a</p>"),
    "links": repeated(H, "<a href='x%d'>a</a>"),
    "nested links": nested(H, "<a href='x'>", "a", "</a>"),
    "anchors": repeated(H, "<a name='x%d'></a>"),
    "pictures": repeated(H, "<img src='x%d.png'>"),
    "entities": repeated(H, "&eacute;"),
    "unknown entities": repeated(H, "&zzz;"),
    "ampersands": repeated(H, "&"),
    "angle brackets": repeated(H, "<"),
    "comments": repeated(H, "<!-- a -->"),
    "comment without end": repeated(H + "<!--", "a-"),
    "scripts": repeated(H, "<script>x</script>"),
    "script without end": repeated(H + "<script>", "x<"),
    "preformatted": repeated(H + "<pre>", "a\n"),
    "headings": repeated(H, "<h1>a</h1>"),
    "rules": repeated(H, "<hr>"),
    "breaks": repeated(H, "<br>"),
    "end tags": repeated(H, "</p>"),
    "unknown tags": repeated(H, "<x%d>a</x%d>"),
    "long tag": repeated(H + "<", "a", ">"),
    "titles": repeated("", "<title>a</title>", H),
    "title without end": repeated("<title>", "a&<b"),
    "fonts": repeated(H, "<font face='f%d' color=red>a</font>"),
    "sizes": repeated(H, "<span style='font-size:%dpt'>a</span>"),
    "names": repeated(H, "<a name='n%d'>a</a> "),
    "identities": repeated(H + "<table>", "<tr><td id='n%d'>a</td></tr>"),
    "places and links": repeated(H, "<p id='n%d'><a href='#n%d'>a</a></p>"),
    "widths of columns": repeated(H, "<table><tr><td width=%d>a</td></tr></table>"),
    "fonts of styles": repeated(H, "<span style='font-family:A,F%d'>a</span>"),
    "fonts in lists": repeated(H, "<font face='A,F%d'>a</font>"),
    "crossing tags": repeated(H, "<b>a<i>b</b>c<u>d</i>e</u>"),
    "lists and tables in lists": repeated(
        H, "<ul><li>a<ol><li>b<table><tr><td>c<ul><li>d</ul></td></tr></table></ol></ul>"),
    "spans of all kinds": repeated(
        H + "<table>", "<tr><td rowspan=3>a</td><td colspan=2>b</td></tr><tr><td>c</td></tr>"
        "<tr><td rowspan=2 colspan=2>d</td></tr>", "</table>"),
    "directions": repeated(H, "<p dir='rtl'>a<bdo dir=ltr>b</bdo>\u05d0\u200d\u2067c</p>"),
    "paragraphs of an office": repeated(
        H, "<p class=MsoNormal style='mso-list:l%d level1 lfo1'><![if !supportLists]>1.<span "
        "style='font:7.0pt \"T\"'>&nbsp;</span><![endif]>a<o:p></o:p></p>"),
    "pictures in links": repeated(H, "<p><a href='z%d'><img src='x%d.png'></a></p>"),
    "pictures of broken code": repeated(H, "<p><img src='data:image/png;base64,%d!'>a"),
    "block quotes": nested(H, "<blockquote>", "a", "</blockquote>"),
    "definition lists": repeated(H + "<dl>", "<dt>a<dd>b"),
    "text": repeated(H, "abc def "),
    "one word": repeated(H, "a"),
}

TXT = {
    "lines": repeated("", "abc def\n"),
    "empty lines": repeated("", "\n"),
    "one line": repeated("", "abc def "),
    "one word": repeated("", "a"),
    "blanks": repeated("", " "),
    "no-break spaces": repeated("", "a\u00a0"),
    "combining marks": repeated("a", "\u0301"),
    "letters from right to left": repeated("", "\u05d0 a "),
    "directions": repeated("", "\u202e a\u202c"),
    "ideographs": repeated("", "\u65e5"),
    "dashes": repeated("", "a\u2014"),
    "form feeds": repeated("", "a\f"),
    "letters beyond the first plane": repeated("", "\U0001F600"),
    "signs of objects": repeated("", "a\ufffc"),
    "UTF-16": lambda size: b"\xff\xfe" + ("a b\n" * (size // 8)).encode("utf-16-le"),
    "broken bytes": lambda size: b"\xffa\xc3\n" * (size // 4),
    "families": repeated("", "\U0001F468\u200d\U0001F469"),
    "levels of direction": nested("", "\u2067a\u05d0 ", "b", "\u2069"),
    "speeches": repeated("", "INT. A - DAY\n\nAction.\n\nANNA\n(low)\nWords.\n\n"),
    "dots": repeated("", ". ! ? .) \" "),
    "Thai": repeated("", "\u0e44\u0e17\u0e22"),
}

MARKUP = {
    "footnotes": repeated("", "a{\\Mvrn_fn=b\\end_Mvrn_fn} "),
    "footnotes in lines": repeated("", "a{\\Mvrn_fn=b\\end_Mvrn_fn}\n"),
    "annotations": repeated("", "a{\\Mvrn_annot\\color={\\R=0.5\\G=0.5\\B=0}\\text=b"
                                "\\end_Mvrn_annot} "),
    "kept formats": repeated("", "a{\\Mvrn_ps=b\\end_Mvrn_ps} "),
    "opening codes": repeated("", "{\\Mvrn_fn="),
    "opening codes of annotations": repeated("", "{\\Mvrn_annot"),
    "closing codes": repeated("", "\\end_Mvrn_fn}"),
    "opening and closing codes": halves("", "{\\Mvrn_fn=", "", "\\end_Mvrn_fn}"),
    "pairs of two kinds": repeated("", "{\\Mvrn_fn={\\Mvrn_ps=a\\end_Mvrn_fn}\\end_Mvrn_ps}"),
    "codes half closed": in_turn("", ["{\\Mvrn_fn=a", "\\end_Mvrn_annot} ", "{\\Mvrn_ps=b",
                                      "\\end_Mvrn_fn} "]),
    "footnotes without words": repeated("", "{\\Mvrn_fn=b\\end_Mvrn_fn}"),
    "pictures in footnotes": repeated("", "a{\\Mvrn_fn={$MVRImageLink[w:3;h:2]=x%d.png}"
                                      "\\end_Mvrn_fn} "),
    "footnotes over lines": repeated("", "a{\\Mvrn_fn=b\nc\n\nd\\end_Mvrn_fn}\n"),
    "colours": repeated("{\\Mvrn_annot\\color={\\R=", "0.", "\\G="),
    "markers": repeated("", "<$MvrKeepWithNext>"),
    "pictures": repeated("", "{$MVRImageLink[w:3;h:2]=x%d.png}"),
    "pictures of one name": repeated("", "{$MVRImageLink[w:3;h:2]=x.png}"),
    "large pictures": repeated("", "{$MVRImageLink[w:9999;h:9999]=x%d.png}"),
    "opening pictures": repeated("", "{$MVRImageLink[w:3;h:2]="),
    "beginnings of pictures": repeated("", "{$MVRImageLink[w:"),
    "long path": repeated("{$MVRImageLink[w:3;h:2]=", "x", "}"),
    "long width": repeated("{$MVRImageLink[w:", "9", ";h:2]=x}"),
}

MD = {
    "emphasis": repeated("", "*a* "),
    "stars": repeated("", "*a "),
    "nested emphasis": nested("", "*a ", "b", "*"),
    "brackets": repeated("", "["),
    "links": repeated("", "[a](b) "),
    "nested links": nested("", "[", "a", "](b)"),
    "references": repeated("", "[a%d]: /x\n"),
    "references used": halves("", "[a%d]: /x\n", "\n", "[a%d] "),
    "backslashes": repeated("", "\\*"),
    "entities": repeated("", "&amp;"),
    "autolinks": repeated("", "www.a.b "),
    "addresses": repeated("", "a@b.c "),
    "angle brackets": repeated("", "<"),
    "autolinks in angle brackets": repeated("", "<http://a.b> "),
    "code": repeated("", "`a` "),
    "backticks": repeated("", "`a``"),
    "fences": repeated("", "```\na\n```\n"),
    "quotes": repeated("", "> a\n\n"),
    "nested quotes": nested("", ">", " a", ""),
    "lists": repeated("", "* a\n"),
    "numbered lists": repeated("", "1. a\n"),
    "lists of one item": repeated("", "- a\n\n+ a\n\n"),
    "nested items": repeated("", "> 1. > - " * 20 + "a\n\n"),
    "lists apart": repeated("", "- a\n\n<!-- a word or two -->\n\n"),
    "references in pictures": halves("", "[a%d]: /x\n", "\n", "![[a%d]][a1] "),
    "headings": repeated("", "# a\n"),
    "tables": repeated("|a|b|\n|-|-|\n", "|c|d|\n"),
    "wide table": repeated("", "|a"),
    "paragraphs": repeated("", "a\n\n"),
    "lines": repeated("", "abc def\n"),
    "pictures": repeated("", "![a](b%d) "),
    "strikes": repeated("", "~~a~~ "),
    "tilde runs": repeated("", "~a~~"),
    "rules": repeated("", "---\n\n"),
    "footnotes": halves("", "a[^%d] ", "\n\n", "[^%d]: x\n\n"),
    "footnotes in one word": halves("", "a[^%d]", "\n\n", "[^%d]: x\n\n"),
    "chained footnotes": halves("", "a[^%d] ", "\n\n", "[^%d]: x[^1%d]\n\n"),
    "comments": repeated("", "a <!-- b --> "),
    "quotes of lists of quotes": repeated(
        "", "> - a\n>   > 1. b\n>   >    | c | d |\n>   >    |---|---|\n>   >    | e[^1] | f |\n\n",
        "\n[^1]: x\n"),
    "tables with footnotes": halves("| a | b |\n|---|---|\n", "| c[^%d] | **d** |\n", "\n",
                                    "[^%d]: e\n\n"),
    "footnotes with tables and lists": halves(
        "", "a[^%d] ", "\n\n", "[^%d]: b\n\n    | c | d |\n    |---|---|\n    | e | f |\n\n"
        "    - g\n      1. h\n\n"),
    "comments over footnotes": halves("", "{==a[^%d] b==}{>>c<<} ", "\n\n", "[^%d]: d\n\n"),
    "comments over paragraphs": repeated("", "{==a\n\nb==}{>>c\n\nd<<}\n\n"),
    "one footnote at each word": repeated("[^1]: b c\n\n", "word[^1] "),
    "strikes over code": repeated("", "~~a `b~~ c` ~d~ "),
    "HTML around paragraphs": repeated(
        "", "<div><p>a</p>\n\n**b** <span style='color:red'>c</span>\n</div>\n\n"),
    "pictures in links in tables": repeated("|a|\n|-|\n", "|[![b](c%d.png)](d%d)|\n"),
}


def shapes():
    """Name, command and function of each shape."""
    for command, table in (("rtf", RTF), ("fdx", FDX), ("html", HTML), ("txt", TXT),
                           ("txt-markup", MARKUP), ("md", MD)):
        for name, make in table.items():
            yield command.split("-")[0] + ": " + name, command, make
    # What is read in time can still be written slowly.
    for command, names in {
        "rtf-html": ("fields", "one paragraph of formats", "rows", "long title", "lists used",
                     "items in cells"),
        "rtf-bbcode": ("fields", "one paragraph of formats", "old lists", "long title"),
        "rtf-fdx": ("footnotes", "one paragraph of formats", "rows", "paragraph formats",
                    "codes over runs", "comments over footnotes"),
        "rtf-margin": ("comments over footnotes", "annotations in one word"),
        "rtf-inspector": ("codes over runs", "codes over cells", "codes of footnotes"),
        "rtf-append": ("levels of lists in turn", "comments over footnotes"),
        "rtf-inline": ("footnotes", "annotations", "annotations in one word",
                       "overlapping annotations"),
        "rtf-endnotes": ("footnotes", "footnotes apart", "footnotes in one word",
                         "codes of footnotes"),
        "rtf-pdf": ("numbers", "rows", "paragraphs", "one paragraph of formats", "one word",
                    "footnotes", "footnotes apart", "long footnote", "no paper",
                    "pages of an inch", "row of many pages"),
        "rtf-odt": ("one paragraph of formats", "rows", "items in cells"),
        "rtf-md": ("footnotes apart", "one paragraph of formats", "rows", "tabs in a paragraph"),
        "rtf-notes": ("footnotes apart", "annotations"),
        "rtf-count": ("footnotes", "text", "one paragraph of formats"),
    }.items():
        for name in names:
            yield "rtf: " + name, command, RTF[name]
    for name in ("notes", "notes in one run", "runs", "types", "settings and types"):
        yield "fdx: " + name, "fdx-rtf", FDX[name]
        yield "fdx: " + name, "fdx-pdf", FDX[name]
    for name in ("speeches", "one speech", "scenes", "notes over dual dialogue"):
        yield "fdx: " + name, "fdx-pages", FDX[name]
    for command in ("html-odt", "html-pdf"):
        for name in ("cells", "rows", "lists", "spans", "cells of odd spacing", "deep lists",
                     "halves of pairs", "cells in tables"):
            yield "html: " + name, command, HTML[name]
    yield "txt: signs of objects", "txt-html", TXT["signs of objects"]
    yield "html: text in tables", "html-pdf", HTML["text in tables"]
    for command in ("md-md", "md-html"):
        for name in ("footnotes", "footnotes in one word", "comments", "tables", "emphasis"):
            yield "md: " + name, command, MD[name]
    yield "html: pictures in links", "html-odt", HTML["pictures in links"]
    for name in ("footnotes without words", "codes half closed", "pictures in footnotes"):
        yield "txt: " + name, "txt-endnotes", MARKUP[name]
    for name in ("footnotes", "one footnote at each word"):
        yield "md: " + name, "md-book", MD[name]
    for name in ("footnotes with tables and lists", "comments over paragraphs"):
        yield "md: " + name, "md-append", MD[name]
    for name in ("footnotes", "references used", "references in pictures", "lists apart",
                 "strikes over code", "tables with footnotes"):
        yield "md: " + name, "md-pdf", MD[name]
    for name in ("links", "headings", "names", "places and links"):
        yield "html: " + name, "html-pdf", HTML[name]
    for command in ("html-html", "html-bbcode"):
        for name in ("spans", "links", "lists", "rows", "fonts"):
            yield "html: " + name, command, HTML[name]
    for name in ("no-break spaces", "combining marks", "letters beyond the first plane"):
        yield "txt: " + name, "txt-pdf", TXT[name]
    for command in ("txt-fdx", "txt-html", "txt-pdf", "txt-replace", "txt-count"):
        for name in ("lines", "one line", "one word", "Thai"):
            yield "txt: " + name, command, TXT[name]


SHAPES = list(shapes())
