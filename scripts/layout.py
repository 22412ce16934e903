#!/usr/bin/env python3
"""Lays out all C++ files with clang-format; with --check says which ones are not laid out so."""
import pathlib
import subprocess
import sys

import llvm_tools

ROOT = pathlib.Path(__file__).resolve().parent.parent


def main(check):
    program = llvm_tools.find("clang-format")
    if not program:
        return llvm_tools.NOT_APPLICABLE
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z", "--", "*.cpp", "*.h"], cwd=ROOT,
                            stdout=subprocess.PIPE, check=True).stdout.decode().split("\0")
    files = [file for file in listed if file and (ROOT / file).exists()]
    if not files:
        print("no C++ file")
        return 1
    return subprocess.run([program, *(["--dry-run", "-Werror"] if check else ["-i"]), *files], cwd=ROOT,
                          check=False).returncode


if __name__ == "__main__":
    sys.exit(main("--check" in sys.argv[1:]))
