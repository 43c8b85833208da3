#!/usr/bin/env python3
"""Writes the bill of materials of the archive for integrators, CycloneDX 1.5 JSON: make_bill_of_materials.py VERSION FOLDER.

FOLDER is the staged archive, whose binaries are listed with their SHA-256 sums. The versions of what is linked into them
are those of the packages that they come from on this machine.
"""

import hashlib
import json
import pathlib
import re
import subprocess
import sys

# Linked statically, by the distribution's package, with the upstream licence and the binaries that hold it.
PARTS = [
    ("SQLite", "sqlite3", "blessing", ["kxdb.dll"]),
    ("pugixml", "pugixml", "MIT", ["kxhost.exe"]),
    ("libstdc++", "g++-mingw-w64-i686-posix", "GPL-3.0-only WITH GCC-exception-3.1", ["*"]),
    ("libgcc", "g++-mingw-w64-i686-posix", "GPL-3.0-only WITH GCC-exception-3.1", ["*"]),
    ("libssp", "g++-mingw-w64-i686-posix", "GPL-3.0-only WITH GCC-exception-3.1", ["*"]),
    ("winpthreads", "mingw-w64-i686-dev", "MIT AND BSD-3-Clause-Clear", ["*"]),
    ("mingw-w64 runtime", "mingw-w64-i686-dev", "ZPL-2.1", ["*"]),
]


def version_of(package, sources):
    """Of the unpacked source package where there is one, else of the installed package."""
    changelog = sources / package / "debian" / "changelog"
    if changelog.exists():
        return re.search(r"\((.*?)\)", changelog.read_text(encoding="utf-8")).group(1)
    return subprocess.run(["dpkg-query", "-W", "-f", "${Version}", package], capture_output=True, text=True, check=True).stdout


def main(version, folder, sources):
    binaries = sorted(p for p in (folder / "bin").iterdir() if p.suffix in (".dll", ".exe"))
    components = [
        {
            "type": "library" if binary.suffix == ".dll" else "application",
            "bom-ref": binary.name,
            "name": binary.name,
            "version": version,
            "hashes": [{"alg": "SHA-256", "content": hashlib.sha256(binary.read_bytes()).hexdigest()}],
        }
        for binary in binaries
    ]
    needs = {binary.name: [] for binary in binaries}
    for name, package, licence, holders in PARTS:
        found = version_of(package, sources)
        components.append(
            {"type": "library", "bom-ref": name, "name": name, "version": found, "licenses": [{"expression": licence}]}
        )
        for binary in needs:
            if holders == ["*"] or binary in holders:
                needs[binary].append(name)
    bill = {
        "bomFormat": "CycloneDX",
        "specVersion": "1.5",
        "version": 1,
        "metadata": {"component": {"type": "library", "name": "kxdialogs", "version": version}},
        "components": components,
        "dependencies": [{"ref": name, "dependsOn": parts} for name, parts in needs.items()],
    }
    (folder / "bill-of-materials.json").write_text(json.dumps(bill, indent=2) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main(sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3]))
