"""Conversations as the files of cases/ write them down; README.md describes the form."""
import json
import re


def answer(number, result):
    short = with_places(result)
    return f"< answer {number} {json.dumps(short, ensure_ascii=False, sort_keys=True)}"


def with_places(value):
    """The same with ranges and positions as the lines have them."""
    if isinstance(value, list):
        return [with_places(each) for each in value]
    if not isinstance(value, dict):
        return value
    if value.keys() == {"start", "end"}:
        return shown(value)
    if value.keys() == {"line", "character"}:
        return f"{value['line']}:{value['character']}"
    return {key: with_places(each) for key, each in value.items()}


def with_result_ids(value, of):
    """The same with other ids of results, which are texts of the server's own."""
    if isinstance(value, list):
        return [with_result_ids(each, of) for each in value]
    if isinstance(value, dict):
        return {key: of(each) if key == "resultId" else with_result_ids(each, of)
                for key, each in value.items()}
    return value


def expected(lines):
    """An answer may be written on several lines."""
    found = re.match(r"< answer (\S+) (.*)", "\n".join(lines), re.DOTALL)
    return [answer(found[1], json.loads(found[2]))] if found else lines


def range_of(text):
    """"2:5-2:9" as lines and characters from 0, as the protocol counts."""
    start, end = text.split("-")
    place = [dict(zip(("line", "character"), map(int, at.split(":")))) for at in (start, end)]
    return {"start": place[0], "end": place[1]}


def shown(where):
    return "-".join(f"{at['line']}:{at['character']}" for at in (where["start"], where["end"]))


def read_case(text):
    """The parts of a case: files, arguments, lines of the talk, exit status, errors."""
    parts = re.split(r"^=== (.*)\n", text, flags=re.MULTILINE)[1:]
    case = {"files": [], "arguments": [], "talk": "", "exit": 0, "stderr": "",
            "installed": []}
    for title, content in zip(parts[::2], parts[1::2]):
        word, _, name = title.partition(" ")
        if word == "file":
            case["files"].append((name, content))
        elif word in ("arguments", "installed"):
            case[word] = content.split()
        elif word == "exit":
            case["exit"] = int(content)
        elif word in ("talk", "stderr"):
            case[word] = content
        else:
            raise SystemExit(f"no such part: {word}")
    return case


def steps(talk):
    """The lines to send, each with what is expected after it: a list of messages."""
    messages = []
    for line in talk.splitlines():
        if line.startswith("> "):
            yield list(map(expected, messages)), line[2:]
            messages = []
        elif line.startswith("< "):
            messages.append([line])
        elif line:
            messages[-1].append(line)
    yield list(map(expected, messages)), None
