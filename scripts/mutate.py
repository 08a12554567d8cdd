#!/usr/bin/env python3
"""How many faults do the provider tests catch? Mutation testing, one small
fault at a time.

  scripts/mutate.py [--build-dir DIR] [--count N] [--seed S] [--tests REGEX]
                    [--list] [--report FILE] [FILE...]

Picks N mutation sites (default 60) at random but reproducibly (--seed) in
the provider sources (Providers/ZAR, tests excluded; or the FILEs given):
a comparison flipped, a boolean operator swapped, an integer constant
changed, a condition negated, a returned boolean inverted, a call dropped.
For each one it edits the source, rebuilds the provider libraries in DIR
(default build-mutate, configured and built whole on first use; the tests
load the rebuilt shared libraries), runs the tests matching REGEX
(default the provider tests, "^ZAR_"), stops at the first failing test,
and puts the source back. A mutant is "caught" when a test fails, "missed"
when all pass, "not built" when the change does not compile (not counted).
Prints one line per mutant and the share caught; --report writes the
missed ones (file, line, change) for a look at what the tests let through.
--list only prints the mutations it would make.

The tree's sources are restored after each mutant, and on Ctrl-C; do not
edit provider sources while it runs.
"""
import argparse
import os
import random
import re
import signal
import resource
import subprocess
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))

# (name, pattern, replacement); each applies to one match on one line.
OPERATORS = [
    ("== to !=", re.compile(r"(?<![=!<>])==(?!=)"), "!="),
    ("!= to ==", re.compile(r"!="), "=="),
    ("< to <=", re.compile(r"(?<=\s)<(?=\s)"), "<="),
    ("> to >=", re.compile(r"(?<=\s)>(?=\s)"), ">="),
    ("<= to <", re.compile(r"<="), "<"),
    (">= to >", re.compile(r">="), ">"),
    ("&& to ||", re.compile(r"&&"), "||"),
    ("|| to &&", re.compile(r"\|\|"), "&&"),
    ("return true to false", re.compile(r"\breturn true;"), "return false;"),
    ("return false to true", re.compile(r"\breturn false;"), "return true;"),
    ("constant + 1", re.compile(r"(?<![\w.])([1-9]\d{0,5})(?![\w.])"), None),
    ("condition negated", re.compile(r"\bif \((.*)\)\s*$"), None),
    ("call dropped", re.compile(r"^(\s*)([A-Za-z_][\w:.>-]*\s*\([^;]*\));\s*$"), None),
]

SKIP_LINE = re.compile(r'^\s*(//|\*|/\*|#)|log_message|"')


def candidates(path):
    out = []
    with open(path, encoding="utf-8", errors="replace") as f:
        lines = f.read().split("\n")
    for i, line in enumerate(lines):
        if SKIP_LINE.search(line) or "for (" in line or "template" in line:
            continue
        for name, rx, _ in OPERATORS:
            for m in rx.finditer(line):
                out.append((path, i, name, m.start(), m.end()))
    return out


def mutate_line(line, name, start, end):
    for n, rx, repl in OPERATORS:
        if n != name:
            continue
        m = rx.match(line, start) if n != "call dropped" else rx.match(line)
        if not m:
            return None
        if name == "constant + 1":
            new = str(int(m.group(1)) + 1)
        elif name == "condition negated":
            return line[:m.start()] + "if (!(" + m.group(1) + "))" + line[m.end():]
        elif name == "call dropped":
            if m.group(2).split("(")[0].strip() in ("return", "if", "while", "switch", "throw"):
                return None
            return m.group(1) + "(void)0;  // mutant: call dropped"
        else:
            new = repl
        return line[:m.start()] + new + line[m.end():]
    return None


def provider_sources():
    base = os.path.join(ROOT, "Providers", "ZAR")
    files = []
    for d, _, names in os.walk(base):
        if "/tests" in d[len(base):] or d.endswith("tests"):
            continue
        files += [os.path.join(d, n) for n in names if n.endswith(".cpp")]
    return sorted(files)


def _limit_resources():
    # A mutant can make a test allocate without end: 4 GiB of address space
    # per process ends it before it takes the machine with it. It can also
    # make one loop for ever, and ctest's --timeout does not apply to tests
    # that set their own TIMEOUT (ours all do): a minute of processor time
    # per process ends that.
    resource.setrlimit(resource.RLIMIT_AS, (4 << 30, 4 << 30))
    resource.setrlimit(resource.RLIMIT_CPU, (60, 60))


def run(cmd, timeout, limit_resources=False):
    try:
        p = subprocess.run(cmd, cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                           timeout=timeout, text=True,
                           preexec_fn=_limit_resources if limit_resources else None)
        return p.returncode, p.stdout
    except subprocess.TimeoutExpired as e:
        return 124, (e.stdout or b"").decode(errors="replace") if isinstance(e.stdout, bytes) else ""


def main():
    ap = argparse.ArgumentParser(description=__doc__.split("\n")[0],
                                 formatter_class=argparse.RawDescriptionHelpFormatter,
                                 epilog=__doc__[__doc__.index("Picks"):])
    ap.add_argument("--build-dir", default=os.path.join(ROOT, "build-mutate"))
    ap.add_argument("--count", type=int, default=60)
    ap.add_argument("--seed", type=int, default=1)
    ap.add_argument("--tests", default="^ZAR_")
    ap.add_argument("--targets", default="ZAR_Common ZAR_InternalCacheService ZAR_ArrayProvider "
                    "ZAR_SCSIControllerProvider",
                    help="what to rebuild for a mutant (the libraries the sources belong to)")
    ap.add_argument("--list", action="store_true")
    ap.add_argument("--report")
    ap.add_argument("files", nargs="*")
    a = ap.parse_args()
    if a.count < 1:
        ap.error("--count must be positive")

    files = [os.path.abspath(f) for f in a.files] or provider_sources()
    for f in files:
        if not os.path.isfile(f):
            ap.error("no such file: " + f)
    sites = [c for f in files for c in candidates(f)]
    rnd = random.Random(a.seed)
    rnd.shuffle(sites)

    if not a.list:
        if not os.path.isfile(os.path.join(a.build_dir, "CMakeCache.txt")):
            print("configuring " + a.build_dir, flush=True)
            rc, out = run([os.path.join(ROOT, "scripts", "build.sh"), a.build_dir,
                           "-DZAR_WERROR=ON"], 3600)
            if rc:
                sys.exit("mutate.py: the unmutated tree does not build:\n" + out[-3000:])
        rc, out = run(["cmake", "--build", a.build_dir, "-j2"], 3600)
        if rc:
            sys.exit("mutate.py: the unmutated tree does not build:\n" + out[-3000:])
        rc, out = run(["ctest", "--test-dir", a.build_dir, "-R", a.tests, "-j2"], 3600)
        if rc:
            sys.exit("mutate.py: the tests fail without any mutation:\n" + out[-3000:])

    original = {}

    def restore(*_):
        for path, text in original.items():
            with open(path, "w", encoding="utf-8") as f:
                f.write(text)
        original.clear()

    signal.signal(signal.SIGINT, lambda *x: (restore(), sys.exit(130)))
    signal.signal(signal.SIGTERM, lambda *x: (restore(), sys.exit(143)))

    caught = missed = unbuilt = 0
    missed_list = []
    done = 0
    for path, i, name, start, end in sites:
        if done >= a.count:
            break
        with open(path, encoding="utf-8") as f:
            text = f.read()
        lines = text.split("\n")
        new = mutate_line(lines[i], name, start, end)
        if new is None or new == lines[i]:
            continue
        rel = os.path.relpath(path, ROOT)
        where = "%s:%d" % (rel, i + 1)
        if a.list:
            print("%-55s %-22s %s" % (where, name, new.strip()))
            done += 1
            continue
        original[path] = text
        lines[i] = new
        with open(path, "w", encoding="utf-8") as f:
            f.write("\n".join(lines))
        t0 = time.time()
        try:
            rc, _ = run(["cmake", "--build", a.build_dir, "-j2", "--target"] + a.targets.split(),
                        1800)
            if rc:
                unbuilt += 1
                outcome = "not built"
            else:
                # The provider tests take seconds: a mutant that makes one
                # loop is caught by the processor-time limit (see _limit_resources).
                rc, out = run(["ctest", "--test-dir", a.build_dir, "-R", a.tests, "-j2",
                               "--stop-on-failure", "--timeout", "60"], 3600, limit_resources=True)
                if rc:
                    caught += 1
                    outcome = "caught"
                else:
                    missed += 1
                    outcome = "MISSED"
                    missed_list.append((where, name, lines[i].strip()))
        finally:
            restore()
        done += 1
        print("%3d %-9s %-55s %-22s (%.0f s)" % (done, outcome, where, name, time.time() - t0),
              flush=True)

    if a.list:
        return
    # Leave the build as the sources are.
    run(["cmake", "--build", a.build_dir, "-j2"], 3600)
    counted = caught + missed
    share = 100.0 * caught / counted if counted else 0.0
    print("mutants: %d caught, %d missed, %d not built; %.0f%% of %d caught"
          % (caught, missed, unbuilt, share, counted))
    if a.report:
        with open(a.report, "w") as f:
            f.write("# Mutants the tests missed (seed %d)\n\n" % a.seed)
            for where, name, line in missed_list:
                f.write("- `%s` %s: `%s`\n" % (where, name, line))
    sys.exit(0)


if __name__ == "__main__":
    main()
