#!/usr/bin/env python3
"""Checks that the programs and libraries of a build carry the protections that it asks for.

    check_hardening.py CMAKE BUILD_FOLDER

Installs the build into a folder of its own, says of each program and library there what it lacks, and ends
with status 1 if one lacks anything.
"""
import os
import re
import subprocess
import sys
import tempfile

# What a call may begin with where the machine checks indirect jumps: endbr64; paciasp, bti c.
LANDINGS = {
    "X86-64": [bytes.fromhex("f30f1efa")],
    "AArch64": [bytes.fromhex("3f2303d5"), bytes.fromhex("5f2403d5")],
}
# No function of theirs has an array that could be overrun.
NOTHING_TO_PROTECT = ("libvemomempool.so",)
# With optimisation, none of these is left where a checking twin stands in.
PLAIN_FORMATTING = re.compile(r"^(v?(s|sn|f|d)?printf|v?swprintf)$")


def readelf(path, *options):
    command = ["readelf", "--wide", *options, path]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


class Elf:
    def __init__(self, path):
        header = readelf(path, "--file-header")
        self.machine = next((m for m in LANDINGS if m in header), None)
        self.segments = readelf(path, "--program-headers")
        self.dynamic = readelf(path, "--dynamic")
        self.symbols = [line.split() for line in readelf(path, "--dyn-syms").splitlines()
                        if re.match(r"\s*\d+:", line) and len(line.split()) >= 8]
        with open(path, "rb") as file:
            self.bytes = file.read()

    def imports(self):
        return {fields[7].split("@")[0] for fields in self.symbols if fields[6] == "UND"}

    def functions(self):
        return {fields[7]: int(fields[1], 16) for fields in self.symbols
                if fields[6] != "UND" and fields[3] == "FUNC"}

    def at(self, address, size):
        for line in self.segments.splitlines():
            fields = line.split()
            if fields[:1] == ["LOAD"]:
                offset, virtual, length = (int(fields[i], 16) for i in (1, 2, 4))
                if virtual <= address < virtual + length:
                    start = offset + address - virtual
                    return self.bytes[start:start + size]
        return b""


def run_path_entries(dynamic):
    for match in re.finditer(r"Library r(?:un)?path: \[(.*)\]", dynamic):
        yield from match.group(1).split(":")


def lacks(path):
    elf = Elf(path)
    if "BIND_NOW" not in elf.dynamic and "NOW" not in re.findall(r"Flags: (.*)", elf.dynamic):
        yield "names bound before it runs (-z now)"
    if "GNU_RELRO" not in elf.segments:
        yield "a relocation table that is read-only (-z relro)"
    if re.search(r"GNU_STACK.*RWE", elf.segments):
        yield "a stack that isn't executable"
    if re.search(r"LOAD.* RWE ", elf.segments):
        yield "memory that is writable or executable, not both"
    if "TEXTREL" in elf.dynamic:
        yield "code without relocations"
    if "INTERP" in elf.segments and "PIE" not in elf.dynamic:
        yield "a position of its own in each run (-pie)"
    for entry in run_path_entries(elf.dynamic):
        if not entry.startswith(("/", "$ORIGIN")):
            yield f"a run path without the working folder ('{entry}')"
    if "__stack_chk_fail" not in elf.imports() and not os.path.basename(path).startswith(NOTHING_TO_PROTECT):
        yield "the stack protector"
    for name in sorted(filter(PLAIN_FORMATTING.match, elf.imports())):
        yield f"the checking twin of {name} (_FORTIFY_SOURCE)"
    own = {name: address for name, address in elf.functions().items()
           if not name.startswith(("_init", "_fini"))}
    unmarked = [name for name, address in own.items()
                if elf.machine and elf.at(address, 4) not in LANDINGS[elf.machine]]
    if unmarked:
        yield f"a landing mark at {len(unmarked)} of {len(own)} functions, such as {unmarked[0]}"


def installed_files(cmake, build, folder):
    subprocess.run([cmake, "--install", build, "--prefix", folder], check=True, stdout=subprocess.DEVNULL)
    for parent, _, names in os.walk(folder):
        for path in (os.path.join(parent, name) for name in sorted(names)):
            if not os.path.islink(path):
                with open(path, "rb") as file:
                    if file.read(4) == b"\x7fELF":
                        yield path


def main(cmake, build):
    faults = 0
    with tempfile.TemporaryDirectory() as folder:
        files = list(installed_files(cmake, build, folder))
        for path in files:
            for lacking in lacks(path):
                print(f"{os.path.relpath(path, folder)}: lacks {lacking}")
                faults += 1
    print(f"{len(files)} files checked, {faults} lacks")
    return 1 if faults or not files else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
