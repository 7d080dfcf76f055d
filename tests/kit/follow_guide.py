#!/usr/bin/env python3
"""Follows a guide to the letter in the current folder.

    follow_guide.py GUIDE [TRANSCRIPT]

A fence behind "<!-- file: NAME -->" is written to that file, one behind "<!-- run -->" is run by the shell,
and each line of one behind "<!-- says -->" has to be in what the last run said. The transcript gets each file
and each command with all that it printed.
"""
import os
import pathlib
import re
import subprocess
import sys

FENCE = re.compile(r"^<!-- (file: (?P<file>\S+)|run|says) -->\n```\w*\n(?P<text>.*?)^```$", re.M | re.S)


def indented(text):
    return "".join(f"    {line}\n" if line else "\n" for line in text.splitlines())


def main(guide, transcript=None):
    with open(transcript or os.devnull, "w", encoding="utf-8") as record:
        follow(pathlib.Path(guide), record)


def follow(guide, record):
    said = ""
    steps = list(FENCE.finditer(guide.read_text(encoding="utf-8")))
    if not steps:
        sys.exit(f"{guide} has nothing to follow")
    for step in steps:
        text = step["text"]
        if step["file"]:
            pathlib.Path(step["file"]).write_text(text, encoding="utf-8")
            record.write(f"(writes {step['file']})\n{indented(text)}\n")
        elif step[1] == "run":
            done = subprocess.run(["bash", "-euo", "pipefail", "-c", text], text=True, encoding="utf-8",
                                  stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
            said = done.stdout
            record.write("".join(f"$ {line}\n" for line in text.splitlines()) + said + "\n")
            if done.returncode != 0:
                sys.exit(f"This ended with {done.returncode}:\n{text}\nIt said:\n{said}")
        else:
            for line in text.splitlines():
                if line not in said:
                    sys.exit(f"No line has \"{line}\" in it:\n{said}")


main(*sys.argv[1:])
