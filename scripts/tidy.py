#!/usr/bin/env python3
"""clang-tidy over the portable half, with --tests over its tests, fuzzers and benchmarks as well.

A file is looked at again only when it, something it includes, the settings or clang-tidy itself has changed since
it was last found clean. Exit status 0: all clean.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import subprocess
import sys

import llvm_tools

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = pathlib.Path(os.environ.get("KESTRELON_BUILD", ROOT / "build")).resolve()
TREE = BUILD / "native"
CLEAN = BUILD / "tidy"
JOBS = int(os.environ.get("JOBS", "2"))


def dependencies():
    """Source file -> files of ours that it is made of, as the last build recorded them."""
    listed = subprocess.run(["ninja", "-C", str(TREE), "-t", "deps"], stdout=subprocess.PIPE, check=True, text=True).stdout
    found = {}
    for block in listed.split("\n\n"):
        paths = [(TREE / line.strip()).resolve() for line in block.splitlines()[1:]]
        if paths:
            found[paths[0]] = sorted(path for path in paths if path.is_relative_to(ROOT))
    return found


def digest(files, version):
    state = hashlib.sha256(version)
    for file in files:
        state.update(str(file.relative_to(ROOT)).encode() + b"\0" + file.read_bytes())
    return state.hexdigest()


def check(program, source):
    done = subprocess.run([program, "--quiet", "-p", str(TREE), str(source)], stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, text=True, errors="replace", check=False)
    return done.returncode, done.stdout + (done.stderr if done.returncode else "")


def main(with_tests):
    program = llvm_tools.find("clang-tidy")
    if not program:
        return llvm_tools.NOT_APPLICABLE
    compiled = json.loads((TREE / "compile_commands.json").read_text())
    sources = sorted({pathlib.Path(entry["file"]) for entry in compiled if entry["file"].startswith(str(ROOT))})
    if not with_tests:
        sources = [source for source in sources if source.relative_to(ROOT).parts[0] not in ("tests", "fuzz", "bench")]
    made_of = dependencies()
    version = subprocess.run([program, "--version"], stdout=subprocess.PIPE, check=True).stdout
    CLEAN.mkdir(parents=True, exist_ok=True)
    waiting = {}
    for source in sources:
        stamp = CLEAN / str(source.relative_to(ROOT)).replace("/", "_")
        now = digest([ROOT / ".clang-tidy", *made_of.get(source, [source])], version)
        if not stamp.exists() or stamp.read_text() != now:
            waiting[source] = (stamp, now)
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(JOBS) as pool:
        for source, (status, text) in zip(waiting, pool.map(lambda source: check(program, source), waiting)):
            stamp, now = waiting[source]
            if status == 0:
                stamp.write_text(now)
            else:
                failed += 1
                stamp.unlink(missing_ok=True)
            # A line per file, so that whoever waits sees that it goes on.
            print(f"{'FAILED' if status else 'clean'} {source.relative_to(ROOT)}\n{text if status else ''}", end="", flush=True)
    print(f"{len(sources)} files, {len(waiting)} looked at, {failed} with findings")
    return 1 if failed or not sources else 0


if __name__ == "__main__":
    sys.exit(main("--tests" in sys.argv[1:]))
