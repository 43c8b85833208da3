#!/usr/bin/env python3
"""How much the unit tests notice: one small fault at a time is put into the portable code, and unit_test must fail.

tools/mutants.py [--count N] [--jobs N] [--all-tests] [--again | --survivors] [--list]
The faults (swapped operators, constants one off, negated conditions, statements left out) stand at places that are chosen by a
fixed order; code that has not changed keeps its places. Works in copies of the sources under build/mutants/ and keeps what it
found in build/mutants/results.tsv, so that a run that was interrupted goes on. A fault that does not compile does not count.
Tables of trained weights are left out: most of their places change no decision.
"""
import argparse, concurrent.futures, hashlib, json, os, queue, re, resource, shutil, subprocess, sys, threading, time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
WORK = ROOT / "build" / "mutants"
RESULTS = WORK / "results.tsv"
SEED = "1"
FLAGS = "-m32 -msse2 -mfpmath=sse -O1 -g0 -w"
SWAPS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "+": "-", "-": "+", "*": "/", "/": "*",
         "&&": "||", "||": "&&", "+=": "-=", "-=": "+="}
OPERATOR = re.compile(r"(?<= )(<=|>=|==|!=|&&|\|\||\+=|-=|[<>+*/-])(?= )")
NUMBER = re.compile(r"(?<![\w.'])\d+(\.\d+)?(?![\w.'])")
CONDITION = re.compile(r"^(\s*(?:\} else )?if \()([^=;]*|.*[=!<>]=[^;]*)(\) \{)$")
STATEMENT = re.compile(r"^(?!return\b|static_assert|delete\b)(\*?[\w:.>\[\]()-]+(?: [-+*/|&^]?= .*|\(.*\)|\+\+|--)|\+\+.*|--.*|continue|break);$")
ARRAY = re.compile(r"^\s*(?:static |const |constexpr )*[\w:]+ \w+\[\w+\](?: = \{\})?;$")
LITERAL = re.compile(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])\'|//.*')


def mutations(line, before):
    """Yields (column, original, replacement) for every fault that the line can have."""
    bare = LITERAL.sub(lambda m: "\x01" * len(m.group()), line)
    text = bare.strip()
    if not text or text.startswith(("#", "static_assert", "template", "using")) or ARRAY.match(bare):
        return
    for match in OPERATOR.finditer(bare):
        yield match.start(), match.group(), SWAPS[match.group()]
    for match in NUMBER.finditer(bare):
        more = hashlib.sha1((line + str(match.start())).encode()).digest()[0] % 2
        value = float(match.group()) if match.group(1) else int(match.group())
        yield match.start(), match.group(), str(value + 1 if more or value < 1 else value - 1)
    condition = CONDITION.match(bare)
    if condition:
        found = line[condition.start(2):condition.end(2)]
        yield condition.start(2), found, f"!({found})"
    if STATEMENT.match(text) and text.count("(") == text.count(")") and before.rstrip()[-1:] in ("{", "}", ";", ":", ""):
        yield len(line) - len(line.lstrip()), line.strip(), ";"


def sites(root, files):
    """All faults of all files, in the order of a hash that depends on the line alone; one a line."""
    found = []
    for path in files:
        seen, before = {}, ""
        for number, line in enumerate((root / path).read_text(encoding="utf-8").splitlines(), 1):
            seen[line] = seen.get(line, 0) + 1
            choices = [(hashlib.sha1(f"{SEED}|{path}|{line}|{seen[line]}|{fault}".encode()).hexdigest(), fault)
                       for fault in mutations(line, before)]
            if choices:
                key, fault = min(choices)
                found.append((key, path, number, *fault))
            if line.strip() and not line.strip().startswith("//"):
                before = line
    return sorted(found)


class Tree:
    """A copy of the sources with a build of its own, in which one fault at a time is tried."""

    def __init__(self, number):
        self.source, self.build = WORK / f"tree{number}", WORK / f"build{number}"
        names = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, capture_output=True, text=True, check=True).stdout.split("\n")
        for name in filter(lambda n: n and (ROOT / n).is_file(), names):
            copy = self.source / name
            if not copy.exists() or copy.read_bytes() != (ROOT / name).read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copyfile(ROOT / name, copy)
        for copy in self.source.rglob("*"):  # what is gone
            if copy.is_file() and not (ROOT / copy.relative_to(self.source)).exists():
                copy.unlink()
        self.run(["cmake", "-S", self.source, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=", f"-DCMAKE_CXX_FLAGS={FLAGS}", f"-DCMAKE_C_FLAGS={FLAGS}",
                  "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=gold", f"-DKX_RECORDS={os.environ.get('KX_RECORDS', '')}"], check=True)
        if not self.compiles():
            sys.exit(f"{self.source} does not compile: ninja -C {self.build} unit_test")
        started = time.monotonic()
        self.limit = 600
        if self.failures(True):
            sys.exit(f"the tests fail without any fault: {self.build}/test-bin/unit_test")
        self.limit = 10 + 4 * (time.monotonic() - started)

    def run(self, command, **options):
        return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **options)

    def compiles(self):
        return self.run(["ninja", "-C", self.build, "unit_test"]).returncode == 0

    def failures(self, all_tests):
        """The cases that fail; empty when all pass."""
        command = [self.build / "test-bin" / "unit_test", "--gtest_brief=1"] + ([] if all_tests else ["--gtest_fail_fast"])
        try:
            result = subprocess.run(command, cwd=self.build, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=self.limit,
                                    preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (3 << 30, 3 << 30)))
        except subprocess.TimeoutExpired:
            return ["(time)"]
        names = set(re.findall(r"\[  FAILED  \] ([\w./]+)", result.stdout.decode("latin-1")))
        return sorted(names) or ([] if result.returncode == 0 else ["(crash)"])

    def tried(self, site, all_tests):
        _, path, number, column, original, replacement = site
        file = self.source / path
        whole = file.read_text(encoding="utf-8")
        lines = whole.split("\n")
        line = lines[number - 1]
        lines[number - 1] = line[:column] + replacement + line[column + len(original):]
        file.write_text("\n".join(lines), encoding="utf-8")
        try:
            return self.failures(all_tests) or ["survived"] if self.compiles() else ["stillborn"]
        finally:
            file.write_text(whole, encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--count", type=int, default=432)
    parser.add_argument("--jobs", type=int, default=1)
    parser.add_argument("--all-tests", action="store_true", help="note every case that fails, not only the first")
    parser.add_argument("--again", action="store_true", help="forget what an earlier run found")
    parser.add_argument("--survivors", action="store_true", help="try again what survived an earlier run")
    parser.add_argument("--list", action="store_true", help="show the places only, or what is known of them")
    options = parser.parse_args()
    WORK.mkdir(parents=True, exist_ok=True)
    known = {} if options.again or not RESULTS.exists() else dict(line.split("\t") for line in RESULTS.read_text().splitlines())
    if options.survivors:
        known = {key: found for key, found in known.items() if found != "survived"}
    trees = [] if options.list else [Tree(number) for number in range(options.jobs)]
    commands = json.loads((WORK / "build0" / "compile_commands.json").read_text())
    portable = {os.path.relpath(entry["file"], WORK / "tree0") for entry in commands}
    todo = sites(WORK / "tree0", sorted(path for path in portable if path.startswith(("lib/", "dialogs/", "suite/", "host/")) and "_weights_" not in path))
    RESULTS.write_text("".join(f"{key}\t{found}\n" for key, found in known.items()))
    free, lock, done = queue.SimpleQueue(), threading.Lock(), {}
    for tree in trees:
        free.put(tree)

    def work(site):
        with lock:
            if sum(found != "stillborn" for found in done.values()) >= options.count:
                return
        found = known.get(site[0])
        if found is None and not options.list:
            tree = free.get()
            found = ",".join(tree.tried(site, options.all_tests))
            free.put(tree)
            with lock, RESULTS.open("a") as log:
                log.write(f"{site[0]}\t{found}\n")
        with lock:
            done[site] = found or "not tried"
            print(f"{site[1]}:{site[2]}: {site[4]}  ->  {site[5]}: {done[site]}", flush=True)

    with concurrent.futures.ThreadPoolExecutor(max(options.jobs, 1)) as pool:
        list(pool.map(work, todo))
    tried = [site for site in todo if done.get(site) not in (None, "stillborn", "not tried")][:options.count]
    survivors = [site for site in tried if done[site] == "survived"]
    print("\nsurvived:")
    for site in sorted(survivors, key=lambda s: s[1:3]):
        print(f"  {site[1]}:{site[2]}: {site[4]}  ->  {site[5]}")
    print(f"{len(tried) - len(survivors)} of {len(tried)} killed")


if __name__ == "__main__":
    main()
