#!/usr/bin/env python3
"""Writes the assembly manifest for registration-free use from the interface descriptions.

  manifest.py ROOT VERSION ARCHITECTURE OUT
"""

import re
import sys
from pathlib import Path

from typelib import gather_text

COCLASS = re.compile(r"\[([^\]]*)\]\s*coclass\s+(\w+)")
CONTROL_STATUS = "recomposeonresize,cantlinkinside,insideout,activatewhenvisible,setclientsitefirst"
EXTRA_STATUS = {"USImageList": ",invisibleatruntime"}


def guid(text):
    return "{" + re.search(r"uuid\(([^)]+)\)", text).group(1) + "}"


def main():
    root, version, architecture, out = Path(sys.argv[1]), sys.argv[2], sys.argv[3], Path(sys.argv[4])
    text = gather_text(root / "server/kestrelon2012.idl", root)
    text = re.sub(r"//[^\n]*|/\*.*?\*/", "", text, flags=re.S)
    library = guid(re.search(r"\[([^\]]*)\]\s*library\s+\w+", text).group(1))
    lines = [
        '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>',
        '<assembly xmlns="urn:schemas-microsoft-com:asm.v1" manifestVersion="1.0">',
        f'  <assemblyIdentity type="win32" name="Kestrelon2012" version="{version}"'
        f' processorArchitecture="{architecture}"/>',
        '  <file name="kestrelon2012.ocx">',
        f'    <typelib tlbid="{library}" version="1.0" helpdir="" flags="CONTROL"/>',
    ]
    for attributes, name in COCLASS.findall(text):
        if "noncreatable" in attributes:
            continue
        status = CONTROL_STATUS + EXTRA_STATUS.get(name, "")
        status = f' miscStatusContent="{status}"' if re.search(r"\bcontrol\b", attributes) else ""
        lines += [
            f'    <comClass clsid="{guid(attributes)}" tlbid="{library}" threadingModel="Apartment"',
            f'              progid="Kestrelon2012.{name}"{status}>',
            f"      <progid>Kestrelon2012.{name}.1</progid>",
            "    </comClass>",
        ]
    lines += ["  </file>", "</assembly>", ""]
    out.write_text("\n".join(lines), encoding="utf-8")


if __name__ == "__main__":
    main()
