#!/usr/bin/env python3
"""Imports random sources of each format, hostile ones among them, and judges the results.

    random_sources.py RUX [COUNT]

What holds for each: the scripts pass `rux check`; the loss report has as many items as a counter
that reads the source by itself, each once; the same source gives the same bytes; and the limits
of the compiled machine are exactly those of the source, but for the ones that are reported.
"""
import collections
import csv
import decimal
import io
import json
import pathlib
import random
import subprocess
import sys
import tempfile

LIMITS = ["THRESHOLD_FH", "THRESHOLD_WH", "THRESHOLD_WL", "THRESHOLD_FL"]
TEXTS = ["CPU 0", "FAN", "FAN", "P12V", 'a "b", c', "x;y #1", "[SENSOR]", "= 1", "rux: allow all",
         "back\\", "\u201cquoted\u201d", "12", "0", "\u00e4\u202e", "$bus PSU", "A/B", "-", "tab\there"]


def some_text(random_):
    return random_.choice(TEXTS + [f"S{random_.randrange(1000)}" for _ in TEXTS])


def some_number(random_):
    return random_.choice([
        str(random_.randrange(-300, 5000)),
        f"{random_.randrange(-99, 300)}.{random_.randrange(1000)}",
        f"{random_.randrange(1, 99)}e{random_.randrange(-6, 5)}",
        "-1", "0", "4294967295", "99999999999", "0.00000000001"])


def make_csv(random_):
    columns = ["NAME", "group", "ID", "unit", "P_NOTE", "Owner"] + LIMITS
    text = io.StringIO()
    writer = csv.writer(text, lineterminator=random_.choice(["\n", "\r\n"]))
    writer.writerow(columns)
    for _ in range(random_.randrange(1, 30)):
        row = [some_text(random_), random_.choice(["", "A", "A/B", "C"]),
               random_.choice(["", hex(random_.randrange(1, 60)), "zz"]),
               random_.choice(["", "V", "degrees C", "odd"]),
               random_.choice(["", some_text(random_)]), random_.choice(["", "me"])]
        row += [random_.choice(["", "na", some_number(random_)]) for _ in LIMITS]
        writer.writerow(row)
    return text.getvalue()


def count_csv(text):
    rows = list(csv.reader(io.StringIO(text)))
    return sum(1 for row in rows[1:] for cell in row if cell != "")


def limits_csv(text):
    """Of each sensor, what its limits should be; None: what the import may drop."""
    sensors = []
    for row in csv.DictReader(io.StringIO(text)):
        if row["NAME"] in ("", "-"):  # the latter is how lists say nothing
            continue
        sensors.append({limit: row[limit] for limit in LIMITS if row[limit] not in ("", "na")})
    return sensors


def make_threshold(random_, label):
    threshold = {"Direction": random_.choice(["greater than", "less than"]),
                 "Severity": random_.choice([0, 1, 1, 4]), "Value": "@" + some_number(random_)}
    if label:
        threshold["Label"] = label
    if random_.random() < 0.5:
        threshold["Name"] = random_.choice(["upper critical", "odd"])
    if random_.random() < 0.5:
        threshold["Hysteresis"] = 0.5
    return threshold


def make_exposed(random_):
    entry = {"Name": some_text(random_), "Type": random_.choice(["ADC", "TMP75", "ADS7830", "Pid"])}
    labels = random_.choice([[], ["in0", "temp1"], ["pin"]])
    if labels:
        entry["Labels"] = labels
        entry["in0_Name"] = some_text(random_)
    if random_.random() < 0.5:
        entry.update(Address="0x48", Bus=random_.choice([3, "$bus"]))
    if random_.random() < 0.3:
        entry["Connector"] = {"Tachs": [0, 1], "Empty": {}, some_text(random_): None, "On": True}
    if random_.random() < 0.1:
        del entry["Name"]
    entry["Thresholds"] = [make_threshold(random_, random_.choice(labels) if labels else "")
                           for _ in range(random_.randrange(5))]
    return entry


def make_entity_manager(random_):
    boards = [{"Name": some_text(random_), "Type": "Board", "Probe": "TRUE",
               "Exposes": [make_exposed(random_) for _ in range(random_.randrange(8))]}
              for _ in range(random_.randrange(1, 3))]
    text = json.dumps(boards if random_.random() < 0.7 else boards[0], indent=1)
    # Numbers as they are written, which Python would write otherwise.
    for quote in ['"@', '@']:
        text = text.replace(quote, "@")
    lines = [line.replace("@", "").replace('",', ",").rstrip('"') if "@" in line else line
             for line in text.split("\n")]
    return "// made at random\n" + "\n".join(lines)


def leaves(value):
    if isinstance(value, dict) and value:
        return sum(map(leaves, value.values()))
    if isinstance(value, list) and value:
        return sum(map(leaves, value))
    return 1


def count_entity_manager(text):
    return leaves(json.loads(text.split("\n", 1)[1]))


Format = collections.namedtuple("Format", "name file make count limits")
FORMATS = [
    Format("csv", "list.csv", make_csv, count_csv, limits_csv),
    Format("entity-manager", "board.json", make_entity_manager, count_entity_manager, None),
]


class Failed(Exception):
    pass


def expect(holds, what):
    if not holds:
        raise Failed(what)


def bytes_of(folder):
    return {path.name: path.read_bytes() for path in sorted(folder.iterdir())}


def judge_report(report, count):
    counts = report["counts"]
    outcomes = collections.Counter(item["outcome"] for item in report["items"])
    expect(counts["items"] == count, f"{counts['items']} items reported, {count} counted")
    expect(sum(outcomes.values()) == count, "each item has one outcome")
    for outcome in ("used", "changed", "dropped"):
        expect(counts[outcome] == outcomes[outcome], f"as many are {outcome} as listed")
    places = [(item.get("line"), item["item"]) for item in report["items"]]
    expect(len(set(places)) == count, "no item is listed twice")


def judge_limits(rux, main, report, expected):
    """Each limit of the machine is one of the source; the others are reported as dropped."""
    table = json.loads(subprocess.run([rux, "table", main, "--format", "json", "--columns",
                                       "NAME," + ",".join(LIMITS)],
                                      check=True, stdout=subprocess.PIPE).stdout)
    found = collections.Counter((limit, decimal.Decimal(str(row[limit])))
                                for row in table["rows"] for limit in LIMITS if limit in row)
    wanted = collections.Counter((limit, decimal.Decimal(number))
                                 for sensor in expected for limit, number in sensor.items())
    expect(not found - wanted, f"limits that the source does not have: {found - wanted}")
    dropped = sum(1 for item in report["items"]
                  if item["item"] in LIMITS and item["outcome"] == "dropped" and
                  item["reason"] != "nameless")
    expect(sum((wanted - found).values()) == dropped, "what is missing is reported")


def judge(rux, format_, folder, text):
    source = folder / format_.file
    source.write_text(text, newline="")
    command = [rux, "import", format_.name, source, "--losses-format", "json"]
    for target in ("one", "two"):
        run = subprocess.run(command + ["-o", folder / target, "--losses", folder / "losses.json"],
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        expect(run.returncode == 0, run.stdout.decode())
    expect(bytes_of(folder / "one") == bytes_of(folder / "two"), "the same source, the same bytes")
    report = json.loads((folder / "losses.json").read_text())
    judge_report(report, format_.count(text))
    if format_.limits:
        judge_limits(rux, folder / "one" / "main.rux", report, format_.limits(text))
    return folder / "one" / "main.rux"


def main():
    rux, count = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 12
    mains = []
    with tempfile.TemporaryDirectory() as folder:
        for format_ in FORMATS:
            for seed in range(count):
                text = format_.make(random.Random(f"{format_.name} {seed}"))
                place = pathlib.Path(folder, f"{format_.name}-{seed}")
                place.mkdir()
                try:
                    mains.append(judge(rux, format_, place, text))
                except Failed as why:
                    print(text)
                    sys.exit(f"{format_.name}, seed {seed}: {why}")
        check = subprocess.run([rux, "check", "--werror", *mains], stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT)
        fmt = subprocess.run([rux, "fmt", "--check", folder], stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT)
        if check.returncode or fmt.returncode:
            sys.exit(check.stdout.decode() + fmt.stdout.decode())


if __name__ == "__main__":
    main()
