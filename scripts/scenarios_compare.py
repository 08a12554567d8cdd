#!/usr/bin/env python3
"""Compares the answers of two runs of scenarios.sh, scenario by scenario,
in a form two servers can be compared in: host and port masked, wbemcli's
records (an instance or a path, its values may span lines) sorted with the
keys and properties of each sorted, a CIM-XML answer read as XML and printed
as an indented tree whose children are sorted (escaping and order do not
count).

Usage: scenarios_compare.py DIR1 DIR2     the scenarios that differ, with a diff;
                                          exit status 1 if any
       scenarios_compare.py --show FILE   one answer as it is compared
"""
import difflib
import html
import os
import re
import sys
import xml.etree.ElementTree as ET

# A record of wbemcli's output starts with an object path: host[:port]/namespace:...
RECORD_START = re.compile(r'^(?:\[[0-9A-Fa-f:]+\]|[\w.-]+)(?::\d+)?/\w[\w/]*:')
HOSTPORT = re.compile(r'(?<![\w.])(?:\[[0-9A-Fa-f:]+\]|[\w.-]+):\d+/(?=[\w/]*:)')
SLASHED_HOST = re.compile(r'//[^/"\s]+/(?=root/)')


def mask(text):
    return SLASHED_HOST.sub('//HOST/', HOSTPORT.sub('HOST/', text))


def split_top(text, sep, before_name=False):
    """Splits at separators outside double quotes; with before_name only where
    a NAME= follows (values of arrays are comma-separated too)."""
    parts, cur, quoted, i = [], [], False, 0
    while i < len(text):
        ch = text[i]
        if ch == '\\' and quoted and i + 1 < len(text):
            cur.append(text[i:i + 2])
            i += 2
            continue
        if ch == '"':
            quoted = not quoted
        if ch == sep and not quoted and (
                not before_name or re.match(r'[A-Za-z_]\w*=', text[i + 1:])):
            parts.append(''.join(cur))
            cur = []
        else:
            cur.append(ch)
        i += 1
    parts.append(''.join(cur))
    return parts


def wbemcli_line(line):
    """host:port/ns:Class.K="v",K2="v" P=1,Q="x" -> keys and properties sorted."""
    line = mask(line.rstrip('\n'))
    head = split_top(line, ' ')
    path, rest = head[0], ' '.join(head[1:])
    if '.' in path and '=' in path:
        cls, _, keys = path.partition('.')
        path = cls + '.' + ','.join(sorted(split_top(keys, ',', True)))
    if rest:
        rest = ','.join(sorted(split_top(rest, ',', True)))
        return path + ' ' + rest
    return path


def canon(elem, depth=0):
    if elem.tag == 'HOST':
        elem.text = 'HOST'
    attrs = ' '.join('%s=%r' % (k, mask(v)) for k, v in sorted(elem.attrib.items()))
    text = (elem.text or '').strip()
    head = '  ' * depth + elem.tag + (' ' + attrs if attrs else '')
    if text:
        head += ' = ' + repr(mask(text))
    children = sorted(canon(c, depth + 1) for c in elem)
    return '\n'.join([head] + children)


def records(lines):
    """Groups wbemcli's lines into records: a line that does not start with
    an object path continues the record before it (a value with newlines)."""
    out = []
    for line in lines:
        if out and not RECORD_START.match(line) and not line.startswith('*'):
            out[-1] += '\n' + line
        else:
            out.append(line)
    return out


def normalize(path):
    with open(path, encoding='utf-8', errors='replace') as f:
        lines = f.read().split('\n')
    header, body = [], []
    for line in lines:
        if not body and (line.startswith('$ ') or line.startswith('exit ')):
            header.append(mask(line))
        else:
            body.append(line)
    text = '\n'.join(body).strip()
    m = re.search(r'^<', text, re.M)
    if m:
        try:
            root = ET.fromstring('<ANSWER>' + text[m.start():] + '</ANSWER>')
            before = sorted(mask(l) for l in text[:m.start()].split('\n') if l.strip())
            return header + before + canon(root).split('\n')
        except ET.ParseError:
            pass
    body = [l for l in text.split('\n') if l.strip()]
    # Servers escape differently what wbemcli then prints as it came
    # (a newline as itself or as &#10;): compare the characters.
    return header + sorted(wbemcli_line(html.unescape(r)) for r in records(body))


def compare(a, b):
    names = sorted(set(n for d in (a, b) for n in os.listdir(d) if n.endswith('.out')))
    same = differ = 0
    for name in names:
        pa, pb = os.path.join(a, name), os.path.join(b, name)
        if not (os.path.exists(pa) and os.path.exists(pb)):
            print('== %s: only in %s' % (name[:-4], a if os.path.exists(pa) else b))
            differ += 1
            continue
        na, nb = normalize(pa), normalize(pb)
        if na == nb:
            same += 1
            continue
        differ += 1
        print('== %s differs' % name[:-4])
        for line in difflib.unified_diff(na, nb, pa, pb, lineterm='', n=1):
            print(line)
    print('scenarios: %d the same, %d different' % (same, differ))
    return 1 if differ else 0


def main():
    args = sys.argv[1:]
    if args and args[0] in ('-h', '--help'):
        print(__doc__)
        return 0
    if len(args) == 2 and args[0] == '--show':
        print('\n'.join(normalize(args[1])))
        return 0
    if len(args) == 2 and all(os.path.isdir(d) for d in args):
        return compare(*args)
    print(__doc__, file=sys.stderr)
    return 2


if __name__ == '__main__':
    sys.exit(main())
