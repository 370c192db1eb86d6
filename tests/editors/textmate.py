"""Highlights scripts with the TextMate grammar as editors do.

  textmate.py GRAMMAR SAMPLE MARKS SCRIPT...

Compares the classes of the texts in SAMPLE with MARKS, and complains about whatever the grammar takes
for wrong in the scripts, which have no errors.
"""
import json
import re
import sys

# What scopes begin with, and the class that marks.txt calls it.
CLASSES = [
    ("comment.block.skipped", "skipped"), ("comment", "comment"),
    ("punctuation.definition.comment", "comment"), ("invalid", "error"),
    ("entity.name.section", "header"), ("punctuation.definition.section", "header"),
    ("support.type.property-name", "key"), ("variable.other.member", "name"), ("string", "string"),
    ("constant.numeric", "number"), ("constant.character.escape", "joint"),
    ("storage.type", "type"), ("keyword.operator", "operator"),
    ("variable.other.reference", "reference")]


class Grammar:
    """A walk of rules over lines. A stack holds the rules whose end was not found yet."""

    def __init__(self, path):
        with open(path, encoding="utf-8") as file:
            self.root = json.load(file)
        self.compiled = {}

    def search(self, pattern, line, at):
        if pattern not in self.compiled:
            self.compiled[pattern] = re.compile(pattern)
        return self.compiled[pattern].search(line, at)

    def leaves(self, rules):
        """The rules, with those that they include."""
        for rule in rules:
            if "include" in rule:
                yield from self.leaves([self.root["repository"][rule["include"][1:]]])
            elif "match" in rule or "begin" in rule:
                yield rule
            else:
                yield from self.leaves(rule.get("patterns", []))

    def next_match(self, stack, line, at):
        """The first match from there on; of several at one place, that of the first rule."""
        best, best_rule = None, None
        if len(stack) > 1:
            best, best_rule = self.search(stack[-1]["end"], line, at), "end"
        for rule in self.leaves(stack[-1].get("patterns", [])):
            match = self.search(rule.get("match") or rule["begin"], line, at)
            if match and (best is None or match.start() < best.start()):
                best, best_rule = match, rule
        return best, best_rule

    def scopes(self, text):
        """A list for each line: the innermost scope of each character, or None."""
        stack = [self.root]
        for line in text.splitlines():
            line += "\n"
            scopes = [None] * len(line)

            def paint(begin, end, name):
                if name:
                    scopes[begin:end] = [name] * (end - begin)

            def paint_match(match, name, captures):
                paint(match.start(), match.end(), name)
                for group, capture in (captures or {}).items():
                    if match.start(int(group)) >= 0:
                        paint(match.start(int(group)), match.end(int(group)), capture["name"])

            at = 0
            seen = set()  # what matched nothing at all must not match there again
            while at <= len(line):
                match, rule = self.next_match(stack, line, at)
                inside = next((r.get("contentName") or r["name"] for r in reversed(stack[1:])
                               if r.get("contentName") or
                               (r.get("name") and not r["name"].startswith("meta"))), None)
                paint(at, match.start() if match else len(line), inside)
                if match is None or (at, len(stack), match.end()) in seen and match.end() == at:
                    break
                seen.add((at, len(stack), match.end()))
                if rule == "end":
                    paint(match.start(), match.end(), stack.pop().get("name"))
                elif "begin" in rule:
                    paint_match(match, rule.get("name"), rule.get("beginCaptures"))
                    stack.append(rule)
                else:
                    paint_match(match, rule.get("name"), rule.get("captures"))
                at = match.end()
            yield line, scopes


def class_of(scope):
    return next((name for begin, name in CLASSES if scope and scope.startswith(begin)), "-")


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def main():
    grammar_path, sample, marks, *scripts = sys.argv[1:]
    grammar = Grammar(grammar_path)
    failed = False
    lines = list(grammar.scopes(read(sample)))
    for mark in read(marks).splitlines():
        if mark.startswith("#"):
            continue
        number, text, wanted = mark.split()
        line, scopes = lines[int(number) - 1]
        got = class_of(scopes[line.index(text.replace("_", " ") if text not in line else text)])
        if got != wanted:
            print(f"{mark}: it is {got}")
            failed = True
    for script in scripts:
        for number, (line, scopes) in enumerate(grammar.scopes(read(script)), 1):
            if {class_of(scope) for scope in scopes} & {"error", "skipped"}:
                print(f"{script}:{number}: {line}", end="")
                failed = True
    return failed


if __name__ == "__main__":
    sys.exit(main())
