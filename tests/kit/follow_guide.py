#!/usr/bin/env python3
"""Follows a guide to the letter in the current folder.

    follow_guide.py GUIDE

A fence behind "<!-- file: NAME -->" is written to that file, one behind "<!-- run -->" is run by the shell,
and each line of one behind "<!-- says -->" has to be in what the last run said.
"""
import pathlib
import re
import subprocess
import sys

FENCE = re.compile(r"^<!-- (file: (?P<file>\S+)|run|says) -->\n```\w*\n(?P<text>.*?)^```$", re.M | re.S)


def main(guide):
    said = ""
    steps = list(FENCE.finditer(pathlib.Path(guide).read_text(encoding="utf-8")))
    if not steps:
        sys.exit(f"{guide} has nothing to follow")
    for step in steps:
        text = step["text"]
        if step["file"]:
            pathlib.Path(step["file"]).write_text(text, encoding="utf-8")
        elif step[1] == "run":
            done = subprocess.run(["bash", "-euo", "pipefail", "-c", text], text=True, encoding="utf-8",
                                  stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
            said = done.stdout
            if done.returncode != 0:
                sys.exit(f"This ended with {done.returncode}:\n{text}\nIt said:\n{said}")
        else:
            for line in text.splitlines():
                if line not in said:
                    sys.exit(f"No line has \"{line}\" in it:\n{said}")


main(sys.argv[1])
