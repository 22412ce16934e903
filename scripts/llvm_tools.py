"""Which clang-format and clang-tidy check the source.

Both change their mind from one release to the next, so a verdict counts only from the release that the settings
at the root were written for.
"""
import re
import shutil
import subprocess

RELEASE = 14
NOT_APPLICABLE = 77


def find(name):
    """The program of that release, or None after telling why there is no verdict."""
    for program in (f"{name}-{RELEASE}", name):
        if not shutil.which(program):
            continue
        said = subprocess.run([program, "--version"], stdout=subprocess.PIPE, check=True, text=True).stdout
        version = re.search(r"version (\d+)", said)
        if version and int(version[1]) == RELEASE:
            return program
    print(f"no verdict: {name} {RELEASE} is not in this release of the distribution")
    return None
