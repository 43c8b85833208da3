#!/usr/bin/env python3
"""Makes the compiled help from docs/help: make_help.py SOURCE PICTURES WORK CHM.

The pages are UTF-8; the viewers of compiled help disagree on encodings, so that each character outside ASCII goes in as
its number. The project file with the context ids, the contents tree and the index are made here from the table below and
from the headings of the pages, so that none of them can name a page that is not there. Needs chmcmd (package fp-utils).
"""

import html
import pathlib
import re
import shutil
import subprocess
import sys

# Page and context id: the number of the dialog's template (the editor's, which has none, as in help_topic.h), by which the
# library asks. In the order of the contents; a page behind a level of 1 stands under the one before it.
PAGES = [
    ("indice", 1, 0),
    ("marcatori", 2, 0),
    ("generale", 20540, 1),
    ("qrs", 20544, 1),
    ("onda-p", 20547, 1),
    ("onda-t", 20546, 1),
    ("misure", 3, 0),
    ("ipertrofia", 20548, 1),
    ("tabella", 4, 1),
    ("interpretazione", 20542, 0),
    ("editor", 5, 1),
    ("dizionario", 20543, 1),
    ("postazione", 6, 0),
    ("tracciato", 7, 1),
]
SITEMAP = '<!DOCTYPE HTML PUBLIC "-//IETF//DTD HTML//EN">\n<HTML><HEAD></HEAD><BODY>\n%s</BODY></HTML>\n'


def ascii_html(text):
    return "".join(c if ord(c) < 128 else f"&#{ord(c)};" for c in text)


def title_of(page):
    return html.unescape(re.search(r"<title>(.*?)</title>", page).group(1))


def item(name, target):
    return (
        '<LI><OBJECT type="text/sitemap"><param name="Name" value="%s"><param name="Local" value="%s"></OBJECT>\n'
        # An apostrophe as it is: viewers drop its number.
        % (ascii_html(html.escape(name, quote=False).replace('"', "&quot;")), target)
    )


def contents(titles):
    text, level = "<UL>\n", 0
    for name, _, depth in PAGES:
        text += "<UL>\n" * (depth - level) + "</UL>\n" * (level - depth) + item(titles[name], name + ".html")
        level = depth
    return SITEMAP % (text + "</UL>\n" * (level + 1))


def index(pages, titles):
    """Titles, headings and the first cell of each row of a table: what a reader may look for."""
    words = {}
    for name, page in pages.items():
        found = re.findall(r"<h2>(.*?)</h2>|<tr><td>(.*?)</td>", page)
        for heading, cell in found + [(html.escape(titles[name]), "")]:
            word = html.unescape(re.sub(r"<.*?>", "", heading or cell)).strip()
            if 1 < len(word) <= 60:
                words.setdefault(word, name)
    rows = sorted(words.items(), key=lambda row: row[0].lower())
    return SITEMAP % ("<UL>\n" + "".join(item(word, name + ".html") for word, name in rows) + "</UL>\n")


def project(chm, files):
    options = {
        "Compatibility": "1.1 or later",
        "Compiled file": chm,
        "Contents file": "help.hhc",
        "Index file": "help.hhk",
        "Default topic": "indice.html",
        "Title": "Revisione dell'ECG",
        "Language": "0x410",
        "Full-text search": "Yes",
    }
    text = "[OPTIONS]\n" + "".join(f"{key}={value}\n" for key, value in options.items())
    text += "\n[FILES]\n" + "".join(f"{file}\n" for file in files)
    text += "\n[ALIAS]\n" + "".join(f"IDH_{number}={name}.html\n" for name, number, _ in PAGES)
    return text + "\n[MAP]\n" + "".join(f"#define IDH_{number} {number}\n" for _, number, _ in PAGES)


def main(source, pictures, work, chm):
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    names = [name for name, _, _ in PAGES]
    strangers = sorted(p.stem for p in source.glob("*.html") if p.stem not in names)
    if strangers:
        sys.exit(f"make_help: no context id for {', '.join(strangers)}")
    pages = {name: (source / f"{name}.html").read_text(encoding="utf-8") for name in names}
    titles = {name: title_of(page) for name, page in pages.items()}
    files = [f"{name}.html" for name in names] + ["style.css"]
    for name, page in pages.items():
        for picture in re.findall(r'src="\.\./pictures/(.*?)"', page):
            shutil.copy(pictures / picture, work)
            files.append(picture)
        page = page.replace('src="../pictures/', 'src="').replace('<meta charset="utf-8">\n', "")
        (work / f"{name}.html").write_text(ascii_html(page), encoding="ascii")
    shutil.copy(source / "style.css", work)
    (work / "help.hhc").write_text(contents(titles), encoding="ascii")
    (work / "help.hhk").write_text(index(pages, titles), encoding="ascii")
    (work / "help.hhp").write_text(project(chm.name, sorted(set(files), key=files.index)), encoding="ascii")
    made = subprocess.run(["chmcmd", "help.hhp"], cwd=work, capture_output=True, text=True)
    if made.returncode != 0 or not (work / chm.name).exists():
        sys.exit(made.stdout + made.stderr)
    shutil.move(work / chm.name, chm)
    for intermediate in work.glob("help.hh?"):
        intermediate.unlink()


if __name__ == "__main__":
    main(*(pathlib.Path(argument) for argument in sys.argv[1:5]))
