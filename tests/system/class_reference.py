#!/usr/bin/env python3
"""The reference of all classes is what the interface descriptions say."""

import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
check = subprocess.run([sys.executable, str(ROOT / "tools/class_reference.py"), str(ROOT), "--check"], check=False)
sys.exit(check.returncode)
