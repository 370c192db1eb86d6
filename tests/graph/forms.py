#!/usr/bin/env python3
"""All forms of a graph say the same: Graphviz, a parser of Mermaid and one of XML read what JSON has.

    forms.py PROGRAM EXAMPLES SMALL

EXAMPLES is the folder of the examples, SMALL a small script. A machine with odd names is made here.
"""
import collections
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

SVG = "{http://www.w3.org/2000/svg}"
SUBJECTS = ["groups", "pelm", "calls", "includes", "references"]
ODD_NAMES = ['a \\"b\\" c'.replace('\\"', "'"), "<script>alert(1)</script>", "&amp; & &lt;", "\\N \\n \\G",
             "]]>", "--> %% end", "#35; #quot;", "`code` **bold**", "{x|y}", "€ 温度 é 😀",
             "\u202eright to left", "a\tb", "end", "style=x", "x" * 100, "\uffff", "((a))", "$(id)",
             "[brackets]", "semi;colon", "50 % \\ /"]
MERMAID_NODE = re.compile(r'^  n(\d+)\["((?:[^"#]|#\d+;)*)"\]$')
MERMAID_EDGE = re.compile(r'^  n(\d+) -->(?:\|"((?:[^"#]|#\d+;)*)"\|)? n(\d+)$')
# What Mermaid, Markdown or HTML could take for more than text.
MERMAID_SIGNS = set("\"<>&`*[]{}|;\\$~^'!?@")

Read = collections.namedtuple("Read", "labels edges")  # texts by node, pairs of nodes


def odd_script():
    """A group, a list and a sensor for each name, and an action that all sensors call."""
    text = "[DEFINE]\nCALL = 3\nCALC = 2\n[ACTION]\nNAME = \"do, <it>\"\nARGNUMBER = 0\nVALUE = CALC, +, 1, 2\n"
    ids = [str(i + 1) for i in range(len(ODD_NAMES))]
    text += "[PELMGROUP]\nNAME = \"all ]]>\"\nID = 1\nPID = 0\nSENSORS = " + ", ".join(ids) + "\n"
    for number, name in zip(ids, ODD_NAMES):
        text += f'[GROUP]\nPARENT = 0\nNAME = "{name}"\nCHILDGROUP = 0\n'
        text += f'[SENSOR]\nPARENT = "{name}"\nNAME = "s {name}"\nID = {number}\nTYPE = 1\nINITFLAG = 0\n'
        text += 'CONTROLMASK = 0\nVALUE = CALL, "do, <it>"\n'
    return text.encode() + b'[GROUP]\nPARENT = 0\nNAME = "\xff\x1b[31m\xc3"\nCHILDGROUP = 0\n'


def printed(program, machine, subject, form, options):
    done = subprocess.run([program, "graph", machine, "--of", subject, "--format", form, *options],
                          capture_output=True, check=True)
    return done.stdout.decode()


def texts_of(element):
    return " ".join("".join(text.itertext()).strip() for text in element.iter(f"{SVG}text"))


def read_dot(text):
    """As Graphviz draws it."""
    plain = subprocess.run(["dot", "-Tplain"], input=text.encode(), capture_output=True, check=True)
    assert not plain.stderr, plain.stderr
    edges = [tuple(int(end[1:]) for end in line.split()[1:3])
             for line in plain.stdout.decode().splitlines() if line.startswith("edge ")]
    drawn = subprocess.run(["dot", "-Tsvg"], input=text.encode(), capture_output=True, check=True)
    labels = {}
    for group in xml.fromstring(drawn.stdout).iter(f"{SVG}g"):
        # After the class of every node come those that it was given.
        if group.get("class", "").startswith("node"):
            labels[int(group.find(f"{SVG}title").text[1:])] = texts_of(group)
    return Read(labels, edges)


def read_mermaid(text):
    def decoded(quoted):
        plain = re.sub(r"#\d+;", "", quoted)
        assert not MERMAID_SIGNS & set(plain), quoted
        return re.sub(r"#(\d+);", lambda code: chr(int(code[1])), quoted)

    lines = text.splitlines()
    assert lines[0] == "flowchart LR", lines[0]
    read = Read({}, [])
    for line in lines[1:]:
        node = MERMAID_NODE.match(line)
        edge = MERMAID_EDGE.match(line)
        if node:
            read.labels[int(node[1])] = decoded(node[2])
        elif edge:
            decoded(edge[2] or "")
            read.edges.append((int(edge[1]), int(edge[3])))
        else:
            assert line.startswith("  %% left out: "), line
    return read


def read_svg(text):
    """Its labels; it has neither scripts nor references, and no text is over another."""
    root = xml.fromstring(text)
    assert root.get("role") == "img" and root[0].tag == f"{SVG}title" and root[1].tag == f"{SVG}desc"
    labels = {}
    boxes = []
    for element in root.iter():
        assert element.tag in {SVG + name for name in ("svg", "title", "desc", "style", "g", "rect",
                                                       "path", "text", "tspan")}, element.tag
        attributes = set(element.keys())
        assert not attributes & {"style", "id", "href"}, attributes
        assert not any(name.startswith("on") for name in attributes), attributes
        if element.get("class", "").startswith("node "):
            labels[len(labels)] = texts_of(element)
            assert element.find(f"{SVG}title").text
            rect = element.find(f"{SVG}rect")
            boxes.append([int(rect.get(name)) for name in ("x", "y", "width", "height")])
    for i, (x, y, width, height) in enumerate(boxes):
        for left, top, wide, high in boxes[:i]:
            assert left + wide <= x or x + width <= left or top + high <= y or y + height <= top
    return labels


def same(one, other):
    """Whether a label is the other one, which may be shortened in the middle."""
    beginning, dots, end = other.partition("…")
    if not dots:
        return one.split() == other.split()
    return one.startswith(beginning) and end.split()[0] in one


def compare(program, machine, subject, options):
    graph = json.loads(printed(program, machine, subject, "json", options))
    edges = sorted((edge["from"], edge["to"]) for edge in graph["edges"])
    dot = read_dot(printed(program, machine, subject, "dot", options))
    mermaid = read_mermaid(printed(program, machine, subject, "mermaid", options))
    svg = read_svg(printed(program, machine, subject, "svg", options))
    assert sorted(dot.edges) == edges and sorted(mermaid.edges) == edges
    numbers = list(range(len(graph["nodes"])))
    for labels in (dot.labels, mermaid.labels, svg):
        assert sorted(labels) == numbers, (labels, numbers)
    for number, node in enumerate(graph["nodes"]):
        label = mermaid.labels[number]
        assert same(label, dot.labels[number]), (label, dot.labels[number])
        assert same(label, svg[number].replace(" ↻", "")), (label, svg[number])
        name = node.get("key") or node.get("name", "")
        if name.isprintable() and name.isascii() and subject != "includes" and "rest" not in node:
            assert label.startswith(name), (label, name)
    return len(numbers)


def main(program, examples, small):
    with tempfile.TemporaryDirectory() as folder:
        odd = pathlib.Path(folder, "odd.rux")
        odd.write_bytes(odd_script())
        nodes = 0
        for machine in (f"{examples}/server/server.rux", f"{examples}/first/first.rux", small, str(odd)):
            for subject in SUBJECTS:
                for options in ([], ["--max-nodes", "12"], ["--max-nodes", "3"]):
                    nodes += compare(program, machine, subject, options)
        nodes += compare(program, str(odd), "pelm", ["--around", "s end"])
    print(f"{nodes} nodes are the same in all forms")


if __name__ == "__main__":
    main(*sys.argv[1:])
