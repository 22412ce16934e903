"""What a control has no use for is not linked into the library again: the linker's maps say so."""
import pathlib
import subprocess
import sys
import os

ROOT = pathlib.Path(__file__).resolve().parents[2]
BUILD = pathlib.Path(os.environ.get("KESTRELON_BUILD", ROOT / "build"))
TOOL = ROOT / "scripts/size_table.py"

maps = sorted(BUILD.glob("win*/kestrelon2012.map"))
if not maps:
    print("no library was linked")
    sys.exit(77)

failed = False
for path in maps:
    # A map that is not read would hold nothing unwanted either, so what must be there is looked for as well.
    table = subprocess.run([sys.executable, TOOL, path], stdout=subprocess.PIPE, text=True, check=True).stdout
    for part in ("| C++ library |", "| controls/us_button |", "| frame |", "| resources |"):
        if part not in table:
            print(f"{path}: no row {part}")
            failed = True
    check = subprocess.run([sys.executable, TOOL, "--check", path], stdout=subprocess.PIPE, text=True, check=False)
    if check.returncode != 0:
        print(f"{path} holds\n{check.stdout}")
        failed = True
sys.exit(1 if failed else 0)
