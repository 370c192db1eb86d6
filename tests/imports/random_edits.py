"""Imports random tables, edits limits, and imports other ones into the same folder.

    random_edits.py RUX COUNT

What holds for each: a limit that was edited keeps its amount, whatever scale it is a number of and
whatever group its sensor is in then; every other one is the amount of the new table.
"""
import csv
import io
import pathlib
import random
import re
import subprocess
import sys
import tempfile
from fractions import Fraction

from random_sources import LIMITS, Failed, expect


def table(choice, count):
    """The text, and the limits of each sensor."""
    text, limits = io.StringIO(), {}
    writer = csv.writer(text, lineterminator="\n")
    writer.writerow(["NAME", "group", "unit"] + LIMITS)
    for number in range(count):
        name = "S%d" % number
        amounts = ["" if choice.random() < 0.3 else
                   "%.*f" % (choice.randrange(4), choice.uniform(2, 1000)) for _ in LIMITS]
        limits[name] = {limit: Fraction(text) for limit, text in zip(LIMITS, amounts) if text}
        writer.writerow([name, choice.choice(["A", "B", "A/C"]), "V"] + amounts)
    return text.getvalue(), limits


def edit(choice, folder):
    """Edits limits in the scripts; returns those by sensor."""
    edited = {}
    for script in sorted(folder.glob("*.rux")):
        sections = re.split(r"(?m)^(?=\[)", script.read_text())
        for place, section in enumerate(sections):
            if not section.startswith("[SENSOR]") or choice.random() < 0.5:
                continue
            name = re.search(r"(?m)^NAME *= (\S+)", section)[1]
            divisor = re.search(r"(?m)^P_DIVISOR *= (\d+)", section)
            scale = int(divisor[1]) if divisor else 1
            for limit in choice.sample(LIMITS, 2):
                number = choice.randrange(2, 900 * scale)
                rest = re.sub(r"(?m)^%s *=.*\n" % limit, "", section)
                section = rest.replace("VALUE ", "%s = %d # mine\nVALUE " % (limit, number), 1)
                edited.setdefault(name, {})[limit] = Fraction(number, scale)
            sections[place] = section
        script.write_text("".join(sections))
    return edited


def found(rux, main):
    text = subprocess.run([rux, "table", main, "--format", "csv", "--columns",
                           "NAME," + ",".join(LIMITS)], check=True, stdout=subprocess.PIPE).stdout
    return {row.pop("NAME"): {limit: Fraction(amount) for limit, amount in row.items() if amount}
            for row in csv.DictReader(io.StringIO(text.decode()))}


def judge(rux, folder, choice):
    source, target = folder / "list.csv", folder / "out"
    edited = {}
    for _ in range(3):
        text, limits = table(choice, 8)
        source.write_text(text)
        run = subprocess.run([rux, "import", "csv", source, "-o", target], stderr=subprocess.PIPE)
        expect(run.returncode in (0, 1), run.stderr.decode())
        for name, amounts in edited.items():
            limits[name].update(amounts)
        expect(found(rux, target / "main.rux") == limits,
               f"{found(rux, target / 'main.rux')}\nis not\n{limits}\n{run.stderr.decode()}")
        for name, amounts in edit(choice, target).items():
            edited.setdefault(name, {}).update(amounts)


def main():
    rux, count = sys.argv[1], int(sys.argv[2])
    for seed in range(count):
        with tempfile.TemporaryDirectory() as folder:
            try:
                judge(rux, pathlib.Path(folder), random.Random(seed))
            except Failed as why:
                sys.exit(f"seed {seed}: {why}")


main()
