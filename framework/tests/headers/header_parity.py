#!/usr/bin/env python3
"""Keep framework/include/Pegasus as strict as OpenPegasus's own headers.

Code that compiles against framework/ has to compile against OpenPegasus, so
no framework header may bring in more of the API than the OpenPegasus header
of the same name: not more headers, not more classes, and it must not compile
on its own where the OpenPegasus one does not (say, because the real one uses
a type it never declares).

  header_parity.py record PEGASUS_SRC > openpegasus-headers.txt
      Reads the headers of an OpenPegasus source tree (PEGASUS_SRC is its
      src/ folder) and writes the manifest: for every header under
      Pegasus/{Common,Provider,Client}, the Pegasus headers it includes and
      the classes it defines; for the headers the framework also has,
      whether the header compiles when included alone.

  header_parity.py check FRAMEWORK_INCLUDE MANIFEST [--cxx CXX] [--sources DIR]
      Compares the framework's headers with the manifest. Exit status 1 and
      one line per difference when a framework header is more forgiving.
      With --sources, provider sources under DIR may include only headers
      OpenPegasus has (framework-only ones under #if ZAR_FRAMEWORK_...).
"""
import argparse
import os
import re
import subprocess
import sys
import tempfile

DIRS = ("Pegasus/Common", "Pegasus/Provider", "Pegasus/Client")
# Definitions that OpenPegasus's build passes to every compilation on Linux.
PLATFORM_FLAGS = ["-DPEGASUS_PLATFORM_LINUX_X86_64_GNU",
                  "-DPEGASUS_USE_EXPERIMENTAL_INTERFACES",
                  "-DPEGASUS_USE_DEPRECATED_INTERFACES"]

# Headers left out of the comparison. The Linkage.h headers hold only the
# export macros (our Config.h defines all three libraries' at once). Array<T>
# is a header template here, where OpenPegasus instantiates it inside its
# library, so Array.h brings in ArrayImpl.h (the member definitions, class
# ArrayRep) and the Array*.h helpers compile alone; providers never name them.
IGNORED = {"Pegasus/Common/Linkage.h", "Pegasus/Provider/Linkage.h",
           "Pegasus/Client/Linkage.h", "Pegasus/Common/ArrayImpl.h",
           "Pegasus/Common/ArrayInter.h", "Pegasus/Common/ArrayInternal.h"}

# Includes of ours accepted although OpenPegasus's header lacks them: the
# language lists keep an Array<LanguageTag> in place of a private Rep.
ACCEPTED_INCLUDES = {
    ("Pegasus/Common/ContentLanguageList.h", "Pegasus/Common/Array.h"),
    ("Pegasus/Common/AcceptLanguageList.h", "Pegasus/Common/Array.h"),
}

INCLUDE_RE = re.compile(r'^\s*#\s*include\s*[<"](Pegasus/[^>"]+)[>"]', re.M)
CLASS_RE = re.compile(
    r'\b(?:class|struct)\s+(?:PEGASUS_\w+_LINKAGE\s+)?([A-Za-z_]\w*)\s*'
    r'(?::[^;{()]*)?\{')


def strip_comments(text):
    text = re.sub(r'/\*.*?\*/', ' ', text, flags=re.S)
    return re.sub(r'//[^\n]*', '', text)


def scan(root, name):
    with open(os.path.join(root, name), encoding="latin-1") as f:
        text = strip_comments(f.read())
    includes = sorted(set(INCLUDE_RE.findall(text)) - {name})
    classes = sorted(set(CLASS_RE.findall(text)))
    return includes, classes


def headers_under(root):
    found = []
    for d in DIRS:
        full = os.path.join(root, d)
        if os.path.isdir(full):
            found += [d + "/" + n for n in sorted(os.listdir(full)) if n.endswith(".h")]
    return found


def compiles_alone(cxx, include_dir, name):
    """True when a translation unit holding only '#include <name>' compiles."""
    with tempfile.NamedTemporaryFile("w", suffix=".cpp", delete=False) as tu:
        tu.write("#include <%s>\n" % name)
    try:
        r = subprocess.run([cxx, "-std=c++17", "-fsyntax-only", "-I", include_dir]
                           + PLATFORM_FLAGS + [tu.name],
                           stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        return r.returncode == 0, r.stderr
    finally:
        os.unlink(tu.name)


def closure(graph, start):
    seen, todo = set(), [start]
    while todo:
        h = todo.pop()
        if h in seen or h not in graph:
            continue
        seen.add(h)
        todo += graph[h]["includes"]
    return seen


def read_manifest(path):
    graph = {}
    with open(path) as f:
        for line in f:
            line = line.strip()
            if not line or line.startswith("#"):
                continue
            fields = line.split()
            entry = {"includes": [], "classes": [], "alone": None}
            for field in fields[1:]:
                key, _, value = field.partition("=")
                if key == "alone":
                    entry["alone"] = value == "yes"
                else:
                    entry[key] = [v for v in value.split(",") if v]
            graph[fields[0]] = entry
    return graph


def record(args):
    ours = set(headers_under(args.framework_include)) if args.framework_include else set()
    print("# OpenPegasus public headers: the Pegasus headers each includes, the classes it")
    print("# defines and (for the headers framework/ also has) whether it compiles alone.")
    print("# Written by header_parity.py record; do not edit by hand.")
    for name in headers_under(args.pegasus_src):
        includes, classes = scan(args.pegasus_src, name)
        line = "%s includes=%s classes=%s" % (name, ",".join(includes), ",".join(classes))
        if name in ours:
            ok, _ = compiles_alone(args.cxx, args.pegasus_src, name)
            line += " alone=%s" % ("yes" if ok else "no")
        print(line)
    return 0


def framework_only_includes(root, real):
    """Pegasus headers that provider sources under root (tests aside) include
    but OpenPegasus lacks, outside an #if on a ZAR_FRAMEWORK_ macro."""
    problems = []
    for dirpath, dirnames, filenames in os.walk(root):
        dirnames[:] = [d for d in dirnames if d != "tests"]
        for name in sorted(filenames):
            if not name.endswith((".cpp", ".h")):
                continue
            path = os.path.join(dirpath, name)
            guards = []  # one flag per open #if: does it name ZAR_FRAMEWORK_?
            with open(path, encoding="latin-1") as f:
                for number, line in enumerate(f, 1):
                    d = re.match(r'\s*#\s*(if|ifdef|ifndef|endif)\b(.*)', line)
                    if d and d.group(1) == "endif":
                        guards = guards[:-1]
                    elif d:
                        guards.append("ZAR_FRAMEWORK_" in d.group(2))
                    m = INCLUDE_RE.match(line)
                    if m and m.group(1) not in real and not any(guards):
                        problems.append("%s:%d includes %s, which OpenPegasus does not have"
                                        % (path, number, m.group(1)))
    return problems


def check(args):
    real = read_manifest(args.manifest)
    ours = {}
    for name in headers_under(args.framework_include):
        includes, classes = scan(args.framework_include, name)
        includes = [i for i in includes if (name, i) not in ACCEPTED_INCLUDES]
        ours[name] = {"includes": includes, "classes": classes}
    where = {}  # class -> the OpenPegasus header that defines it
    for name, entry in real.items():
        for c in entry["classes"]:
            where.setdefault(c, name)

    problems = []
    for name in sorted(ours):
        if name not in real or name in IGNORED:
            continue  # framework-only header: checked through the headers that include it
        ours_reach = closure(ours, name)
        real_reach = closure(real, name)
        for extra in sorted(h for h in ours_reach
                            if h in real and h not in real_reach and h not in IGNORED):
            problems.append("%s brings in %s; OpenPegasus's %s does not"
                            % (name, extra, name))
        real_classes = set()
        for h in real_reach:
            real_classes.update(real[h]["classes"])
        for h in sorted(ours_reach - IGNORED):
            for c in ours[h]["classes"]:
                if c in where and c not in real_classes:
                    problems.append("%s makes %s visible (through %s); with OpenPegasus it needs %s"
                                    % (name, c, h, where[c]))
        if real[name]["alone"] is not None:
            ok, err = compiles_alone(args.cxx, args.framework_include, name)
            if ok and not real[name]["alone"]:
                problems.append("%s compiles on its own; OpenPegasus's does not, so code "
                                "relying on it breaks there" % name)
            elif not ok and real[name]["alone"]:
                first = next((l for l in err.splitlines() if "error" in l), err.strip())
                problems.append("%s does not compile on its own, OpenPegasus's does: %s"
                                % (name, first))
    for src in args.sources or []:
        problems += framework_only_includes(src, real)
    for p in problems:
        print(p)
    checked = sum(1 for n in ours if n in real)
    print("%d framework headers compared with OpenPegasus's, %d differences"
          % (checked, len(problems)), file=sys.stderr)
    return 1 if problems else 0


def main():
    p = argparse.ArgumentParser(description=__doc__,
                                formatter_class=argparse.RawDescriptionHelpFormatter)
    sub = p.add_subparsers(dest="cmd", required=True)
    r = sub.add_parser("record", help="write the manifest of an OpenPegasus source tree")
    r.add_argument("pegasus_src", help="OpenPegasus's src/ folder")
    r.add_argument("--framework-include", help="framework/include, to know which headers to compile")
    r.add_argument("--cxx", default=os.environ.get("CXX", "c++"))
    c = sub.add_parser("check", help="compare framework headers with a manifest")
    c.add_argument("framework_include")
    c.add_argument("manifest")
    c.add_argument("--cxx", default=os.environ.get("CXX", "c++"))
    c.add_argument("--sources", action="append", metavar="DIR",
                   help="also check that provider sources under DIR include only headers "
                        "OpenPegasus has (repeatable)")
    args = p.parse_args()
    return record(args) if args.cmd == "record" else check(args)


if __name__ == "__main__":
    sys.exit(main())
