"""Sets up an editor as the manual says, and lets it talk with rux lsp about the example machine.

  client.py CLIENT SOURCE BUILD

The client's section of docs/editors.md is followed by the letter, in a home of its own: shell commands are
run, files are saved where "save=" says. The script of the editor then types, and writes what is shown:
CLIENT.txt. $MACHINE is the folder of the machine there.
"""
import difflib
import os
import re
import shutil
import subprocess
import sys

# The section, and what starts the editor.
CLIENTS = {
    "neovim": ("Neovim", ["nvim", "--headless", "-c", "luafile {tests}/neovim.lua"]),
    "eglot": ("Emacs with eglot", ["emacs", "--batch", "-l", "{tests}/emacs.el",
                                   "--eval", "(session 'eglot-code-actions)"]),
    "lsp-mode": ("Emacs with lsp-mode", ["emacs", "--batch", "-l", "{tests}/emacs.el",
                                         "--eval", "(session 'lsp-execute-code-action)"]),
    "ale": ("Vim with ALE", ["sh", "-c", "exec vim -N -e -s -u ~/.vimrc -i NONE -n -S {tests}/ale.vim"]),
}
# Nothing takes a hundredth of it; it ends what would never end, and shows how far it came.
PATIENCE = 600


def section(page, title):
    begin = re.search(rf"^(#+) {re.escape(title)}$", page, re.MULTILINE)
    end = re.compile(rf"^#{{1,{len(begin[1])}}} ", re.MULTILINE).search(page, begin.end())
    return page[begin.end():end.start() if end else len(page)]


def set_up(title, source, home, env):
    with open(os.path.join(source, "docs/editors.md"), encoding="utf-8") as file:
        text = section(file.read(), title)
    for head, body in re.findall(r"^```(.*)\n((?:.*\n)*?)```$", text, re.MULTILINE):
        save = re.search(r" save=(\S+)", head)
        if save:
            path = os.path.join(home, save[1])
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "w", encoding="utf-8") as file:
                file.write(body)
        elif head.startswith("sh"):
            subprocess.run(["sh", "-eu", "-c", body], cwd=source, env=env, check=True)


def run(command, machine, env):
    """What the editor prints, which is of interest when it fails."""
    try:
        done = subprocess.run(command, cwd=machine, env=env, stdin=subprocess.DEVNULL, timeout=PATIENCE,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        return done.stdout
    except subprocess.TimeoutExpired as hung:
        return (hung.stdout or b"") + b"\nIt does not end."


def main():
    client, source, build = sys.argv[1:]
    title, command = CLIENTS[client]
    tests = os.path.dirname(os.path.abspath(__file__))
    work = os.path.join(build, "tests/editors/clients", client)
    home, machine, out = (os.path.join(work, name) for name in ("home", "machine", "transcript.txt"))
    shutil.rmtree(work, ignore_errors=True)
    os.makedirs(home)
    shutil.copytree(os.path.join(source, "examples/server"), machine)
    # A project of its own, whatever the build folder is in.
    os.mkdir(os.path.join(machine, ".git"))
    env = {"HOME": home, "PATH": os.path.join(build, "bin") + ":" + os.environ["PATH"],
           "LC_ALL": "C.UTF-8", "TERM": "dumb", "OUT": out}
    set_up(title, source, home, env)

    screen = run([argument.format(tests=tests) for argument in command], machine, env)
    with open(os.path.join(tests, client + ".txt"), encoding="utf-8") as file:
        wanted = file.read().splitlines()
    got = []
    if os.path.exists(out):
        with open(out, encoding="utf-8") as file:
            got = file.read().replace(machine, "$MACHINE").splitlines()
    if got != wanted:
        print(*difflib.unified_diff(wanted, got, "wanted", "shown", lineterm=""), sep="\n")
        print(screen.decode(errors="replace"))
        sys.exit(1)


main()
