#!/usr/bin/env python3
"""Makes plain text of the links of staged documents that lead out of the archive: keep_links.py FOLDER."""

import pathlib
import re
import sys

for page in sorted(pathlib.Path(sys.argv[1]).rglob("*.md")):

    def kept(match):
        text, target = match.groups()
        path = target.split("#")[0]
        leads = target.startswith("http") or not path or (page.parent / path).exists()
        return match.group(0) if leads else text

    page.write_text(re.sub(r"(?<!!)\[([^\]]*)\]\(([^)\s]+)\)", kept, page.read_text(encoding="utf-8")), encoding="utf-8")
