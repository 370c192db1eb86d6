#!/usr/bin/env python3
"""What is in a picture can be told from what is behind it, in both themes, as WCAG 2.1 (AA) asks.

    contrast.py PROGRAM SCRIPT
"""
import colorsys
import re
import subprocess
import sys

TEXT = 4.5
SHAPE = 3.0
RULE = re.compile(r"^(\.rux-graph [^{]*)\{(.*)\}$", re.MULTILINE)
HSL = re.compile(r"hsl\((\d+),(\d+)%,(\d+)%\)")


def luminance(colour):
    hsl = HSL.match(colour)
    if hsl:
        hue, saturation, light = (int(part) for part in hsl.groups())
        channels = colorsys.hls_to_rgb(hue / 360, light / 100, saturation / 100)
    else:
        channels = [int(colour[at:at + 2], 16) / 255 for at in (1, 3, 5)]
    red, green, blue = (c / 12.92 if c <= 0.04045 else ((c + 0.055) / 1.055) ** 2.4 for c in channels)
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def contrast(one, other):
    darker, lighter = sorted((luminance(one), luminance(other)))
    return (lighter + 0.05) / (darker + 0.05)


def rules_of(style):
    """By each selector: the properties, those of later rules first."""
    rules = {}
    for selectors, properties in RULE.findall(style):
        for selector in selectors.replace(".rux-graph ", "").split(","):
            rules.setdefault(selector, {}).update(
                pair.split(":", 1) for pair in properties.split(";") if ":" in pair)
    return rules


def check(rules):
    """How many pairs there are; each has contrast enough."""
    paper = rules[".paper"]["fill"]
    pairs = [(rules["text"]["fill"], paper, TEXT), (rules[".marks"]["fill"], paper, TEXT),
             (rules[".line path"]["stroke"], paper, SHAPE)]
    kinds = [rule for selector, rule in rules.items()
             if selector.endswith(" rect") and HSL.match(rule.get("fill", ""))]
    for kind in kinds:
        pairs += [(rules["text"]["fill"], kind["fill"], TEXT), (rules[".marks"]["fill"], kind["fill"], TEXT)]
        pairs += [(kind["stroke"], behind, SHAPE)
                  for behind in (paper, rules[".frame rect"]["fill"], kind["fill"])]
    for front, behind, least in pairs:
        assert contrast(front, behind) >= least, (front, behind, contrast(front, behind))
    assert len(kinds) >= 9, kinds
    return len(pairs)


def main(program, script):
    done = subprocess.run([program, "graph", script], capture_output=True, check=True)
    style = re.search(r"<style>(.*)</style>", done.stdout.decode(), re.DOTALL)[1]
    light, dark = style.split("@media (prefers-color-scheme:dark)")
    print(f"{check(rules_of(light)) + check(rules_of(dark))} pairs of colours")


if __name__ == "__main__":
    main(*sys.argv[1:])
