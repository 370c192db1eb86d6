#!/usr/bin/python3
"""Runs the commands of a CI file as its service would, and reports whether the files are there that the
service takes.

  ci_commands.py FILE [CHANGED...]
"""

import os
import subprocess
import sys

import yaml


def of_github(jobs):
    for job in jobs.values():
        for step in job["steps"]:
            yield "command", step.get("run")
            yield "file", step.get("with", {}).get("sarif_file")


def of_gitlab(jobs):
    for job in jobs.values():
        artifacts = job.get("artifacts", {})
        for command in job["script"]:
            yield "command", command
        for path in [*artifacts.get("reports", {}).values(), *artifacts.get("paths", [])]:
            yield "file", path


def of_pre_commit(repos, changed):
    for repo in repos:
        for hook in repo["hooks"]:
            yield "command", " ".join([hook["entry"], *changed])


def steps_of(content, changed):
    if "repos" in content:
        return of_pre_commit(content["repos"], changed)
    return of_github(content["jobs"]) if "jobs" in content else of_gitlab(content)


with open(sys.argv[1], encoding="utf-8") as file:
    steps = list(steps_of(yaml.safe_load(file), sys.argv[2:]))
for kind, text in steps:
    if kind == "command" and text:
        print("+", text, flush=True)
        subprocess.run(["sh", "-e", "-c", text], check=True)
for kind, text in steps:
    if kind == "file" and text:
        print(text, "is there" if os.path.exists(text) else "IS MISSING")
