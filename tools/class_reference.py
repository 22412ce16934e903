#!/usr/bin/env python3
"""Writes docs/classes.pt-BR.md, the reference of all classes, from the interface descriptions.

  class_reference.py ROOT            writes the document
  class_reference.py ROOT --check    exit status 1 when the document is not what the descriptions say
"""

import re
import sys
from pathlib import Path

import idl_glue
import typelib

DOCUMENT = "docs/classes.pt-BR.md"
HEAD = """# Classes, propriedades, métodos e eventos

Gerado de `server/kestrelon2012.idl` por `tools/class_reference.py`; não edite. Os tipos são os do Basic; *l* marca o que
só se lê. Argumentos entre colchetes são opcionais.
"""
TYPES = {
    "BSTR": "String", "VARIANT_BOOL": "Boolean", "long": "Long", "LONG": "Long", "int": "Long", "short": "Integer",
    "float": "Single", "double": "Double", "CURRENCY": "Currency", "DATE": "Date", "VARIANT": "Variant",
    "OLE_COLOR": "OLE_COLOR", "IFontDisp*": "Font", "IPictureDisp*": "Picture", "IDispatch*": "Object",
    "IUnknown*": "Unknown", "unsigned char": "Byte", "BYTE": "Byte",
}


def basic_type(idl):
    idl = re.sub(r"\s*\*", "*", idl).strip()
    array = re.match(r"SAFEARRAY\((.+)\)\**$", idl)
    if array:
        return basic_type(array.group(1)) + "()"
    if idl in TYPES:
        return TYPES[idl]
    plain = idl.rstrip("*")
    return TYPES.get(plain, plain.lstrip("_"))


def help_text(attributes):
    found = re.search(r'helpstring\("((?:[^"\\]|\\.)*)"\)', attributes)
    return found.group(1).replace('\\"', '"').replace("|", "\\|") if found else ""


def attributes_before(text, start):
    """The bracketed attributes that end right before a position."""
    end = text.rindex("]", 0, start)
    depth, at = 1, end
    while depth:
        at -= 1
        depth += {"]": 1, "[": -1}.get(text[at], 0)
    return text[at : end + 1]


def argument(item):
    text = f"{item.name} As {basic_type(item.type)}"
    default = re.search(r"defaultvalue\(((?:\"[^\"]*\"|[^)])*)\)", item.source)
    if default:
        value = default.group(1)
        if item.type.startswith("VARIANT_BOOL"):
            value = "False" if value == "0" else "True"
        text += f" = {value}"
    return f"[{text}]" if default or "optional" in item.source else text


class Description:
    """The members of one interface, with their help texts."""

    def __init__(self, body):
        self.properties, self.methods = {}, {}
        for attributes, _, name, arguments in idl_glue.MEMBER.findall(body):
            if re.search(r"\bhidden\b|\brestricted\b", attributes):
                continue
            parsed = []
            for text in idl_glue.split_arguments(arguments):
                if text != "void":
                    item = idl_glue.Argument(text)
                    item.source = text
                    parsed.append(item)
            if re.search(r"\bprop(get|put|putref)\b", attributes):
                self._property(name, attributes, parsed)
            else:
                self.methods[name] = (parsed, help_text(attributes))

    def _property(self, name, attributes, arguments):
        entry = self.properties.setdefault(name, {"type": "", "index": [], "help": "", "read": True})
        if re.search(r"\bpropget\b", attributes):
            result = [a for a in arguments if a.retval][0]
            entry["type"] = basic_type(result.type[:-1])
            entry["index"] = [a for a in arguments if not a.retval]
        else:
            entry["read"] = False
            entry["type"] = entry["type"] or basic_type(arguments[-1].type)
        entry["help"] = entry["help"] or help_text(attributes)


def signature(name, arguments):
    shown = ", ".join(argument(a) for a in arguments if not a.retval)
    result = [a for a in arguments if a.retval]
    return f"`{name}({shown})" + (f" As {basic_type(result[0].type[:-1])}`" if result else "`")


def class_lines(text, name):
    at = re.search(rf"\bcoclass\s+{name}\b", text).start()
    coclass = idl_glue.block(text, rf"\bcoclass\s+{name}\b")
    default = re.search(r"\[[^\]]*default[^\]]*\]\s*interface\s+(\w+)", coclass).group(1)
    source = re.search(r"source[^\]]*\]\s*(?:dispinterface|interface)\s+(\w+)", coclass)
    members = Description(idl_glue.block(text, rf"\binterface\s+{default}\b"))
    yield f"\n## {name}\n\n{help_text(attributes_before(text, at))}\n"
    if members.properties:
        yield "| Propriedade | Tipo | |\n|---|---|---|"
        for key in sorted(members.properties, key=str.lower):
            entry = members.properties[key]
            index = f"({', '.join(argument(a) for a in entry['index'])})" if entry["index"] else ""
            yield f"| `{key}{index}` | {entry['type']}{' *l*' if entry['read'] else ''} | {entry['help']} |"
    if members.methods:
        yield "\n| Método | |\n|---|---|"
        for key in sorted(members.methods, key=str.lower):
            arguments, told = members.methods[key]
            yield f"| {signature(key, arguments)} | {told} |"
    if source:
        events = Description(idl_glue.block(text, rf"\bdispinterface\s+{source.group(1)}\b"))
        if events.methods:
            yield "\n| Evento | |\n|---|---|"
            for key in sorted(events.methods, key=str.lower):
                arguments, told = events.methods[key]
                yield f"| {signature(key, arguments)} | {told} |"


def enumeration_lines(text, shown):
    for body, name in re.findall(r"typedef[^{;]*enum\s*\w*\s*\{([^}]*)\}\s*(\w+)\s*;", text):
        members = [re.sub(r"\s+", " ", re.sub(r"\[[^\]]*\]", "", item)).strip() for item in body.split(",")]
        members = [re.sub(r"^\w+", lambda m: shown.get(m[0].encode(), m[0].encode()).decode(), m) for m in members if m]
        yield f"- `{name}`: {', '.join(f'`{m}`' for m in members)}"


def document(root):
    library = (root / "server/kestrelon2012.idl").read_text(encoding="utf-8")
    texts = [idl_glue.strip_comments((root / path).read_text(encoding="utf-8"))
             for path in re.findall(r'#include "([^"]+)"', library)]
    classes = {}
    for text in texts:
        for name in re.findall(r"\bcoclass\s+(\w+)", text):
            classes[name] = list(class_lines(text, name))
    lines = [HEAD]
    for name in sorted(classes, key=str.lower):
        lines += classes[name]
    lines.append("\n## Enumerações\n")
    shown = typelib.shown_names(root)
    lines += sorted((line for text in texts for line in enumeration_lines(text, shown)), key=str.lower)
    return "\n".join(lines) + "\n"


def main():
    root = Path(sys.argv[1])
    made = document(root)
    path = root / DOCUMENT
    if "--check" in sys.argv:
        if not path.exists() or path.read_text(encoding="utf-8") != made:
            sys.exit(f"{DOCUMENT} is not what the interface descriptions say: run tools/class_reference.py .")
    else:
        path.write_text(made, encoding="utf-8")


if __name__ == "__main__":
    main()
