#!/usr/bin/env python3
"""Makes the C++ side of one class from its interface description.

  idl_glue.py IN.idl OUT.h FRAME.h

Reads the dual interface `_Name`, the event interface `__Name` and the coclass `Name` of a description and
writes `template <class Class, class Base> class NameGlue`: it implements every method of the dual interface
by one guarded call into Class, joins the interface with Base (AutomationObject or ControlFrame) and has one
raise_... method for each event. Those that the frame raises itself (declared virtual in FRAME.h) must have the
frame's arguments, or the compiler refuses them.

What Class supplies, in C++ types (std::wstring for BSTR, bool for VARIANT_BOOL, otherwise as declared):
  a property X      either a member object X with get() and put(value) (see frame/property.h), or accessors
                    x() and set_x(value), which are preferred where they exist
  a method DoThis   do_this(arguments in order), returning the result where the description has a retval
Names change from the interface's spelling to snake case: FontBold font_bold, hWnd h_wnd, KN_X kn_x.
"""

import re
import sys
from pathlib import Path

MEMBER = re.compile(r"\[([^\]]*(?:\[[^\]]*\])?[^\]]*)\]\s*(HRESULT|void)\s+(\w+)\s*\((.*?)\)\s*;", re.S)
ARGUMENT = re.compile(r"\[([^\]]*)\]\s*(.+?)\s*(\w+)(\[\])?$", re.S)


def strip_comments(text):
    return re.sub(r"//[^\n]*|/\*.*?\*/", "", text, flags=re.S)


def without_strings(text):
    return re.sub(r'"(?:[^"\\]|\\.)*"', '""', text)


def snake(name):
    name = re.sub(r"([A-Z]+)([A-Z][a-z])", r"\1_\2", name)
    name = re.sub(r"([a-z0-9])([A-Z])", r"\1_\2", name)
    return re.sub(r"_+", "_", name).lower()


def split_arguments(text):
    parts, depth, start = [], 0, 0
    for i, character in enumerate(text):
        depth += character in "[(<"
        depth -= character in "])>"
        if character == "," and depth == 0:
            parts.append(text[start:i])
            start = i + 1
    parts.append(text[start:])
    return [p.strip() for p in parts if p.strip()]


class Argument:
    def __init__(self, text):
        found = ARGUMENT.match(text)
        if not found:
            sys.exit(f"argument not understood: {text}")
        self.attributes = re.sub(r"\([^)]*\)", "", found.group(1))
        self.type = re.sub(r"\s*\*", "*", found.group(2)).strip()
        self.name = found.group(3)
        self.retval = "retval" in self.attributes
        self.out = "out" in re.split(r"[,\s]+", self.attributes) and not self.retval

    @property
    def declared(self):
        return re.sub(r"SAFEARRAY\([^)]*\)", "SAFEARRAY*", self.type)

    def passed(self):
        """The expression that hands this argument to the class."""
        if self.type == "BSTR":
            return f"glue::from_bstr({self.name})"
        if self.type == "VARIANT_BOOL":
            return f"glue::from_bool({self.name})"
        return self.name

    def returned(self, expression):
        base = self.type[:-1]
        if base == "BSTR":
            return f"glue::to_bstr({self.name}, {expression})"
        if base == "VARIANT_BOOL":
            return f"glue::to_bool({self.name}, {expression})"
        return f"glue::to_value({self.name}, {expression})"


class Member:
    def __init__(self, attributes, name, arguments):
        self.attributes = attributes
        self.name = name
        self.id = re.search(r"\bid\(([^)]+)\)", attributes).group(1).strip()
        self.arguments = [Argument(a) for a in split_arguments(arguments) if a != "void"]
        kinds = [k for k in ("propget", "propputref", "propput") if re.search(rf"\b{k}\b", attributes)]
        self.kind = kinds[0] if kinds else "method"


def members(body):
    out = []
    for attributes, _, name, arguments in MEMBER.findall(without_strings(body)):
        out.append(Member(attributes, name, arguments))
    return out


def block(text, pattern):
    found = re.search(pattern, text)
    if not found:
        return None
    start = text.index("{", found.start()) + 1
    depth, position = 1, start
    while depth:
        depth += {"{": 1, "}": -1}.get(text[position], 0)
        position += 1
    return text[start : position - 1]


def method(member):
    prefix = {"propget": "get_", "propput": "put_", "propputref": "putref_", "method": ""}[member.kind]
    declared = ", ".join(f"{a.declared} {a.name}" for a in member.arguments)
    inputs = [a for a in member.arguments if not a.retval]
    results = [a for a in member.arguments if a.retval]
    passed = ", ".join(a.passed() for a in inputs)
    accessor = snake(member.name)
    lines = [f"  STDMETHODIMP {prefix}{member.name}({declared}) override {{"]
    if member.kind == "propget":
        result = results[0]
        if inputs:
            body = [result.returned(f"self().{accessor}({passed})") + ";"]
        else:
            body = [
                f"if constexpr (requires(Class& c) {{ c.{accessor}(); }}) {{",
                f"  {result.returned(f'self().{accessor}()')};",
                "} else {",
                f"  {result.returned(f'self().{member.name}.get()')};",
                "}",
            ]
    elif member.kind in ("propput", "propputref"):
        if len(inputs) > 1:
            body = [f"self().set_{accessor}({passed});"]
        else:
            body = [
                f"if constexpr (requires(Class& c) {{ c.set_{accessor}({passed}); }}) {{",
                f"  self().set_{accessor}({passed});",
                "} else {",
                f"  self().{member.name}.put({passed});",
                "}",
            ]
    else:
        expression = f"self().{accessor}({passed})"
        body = [(results[0].returned(expression) if results else expression) + ";"]
    if not results and not inputs:
        lines.append(f"    return this->call([&] {{ {body[0]} }});")
    else:
        lines.append("    return this->call([&] {")
        lines += [f"      {line}" for line in body]
        lines.append("    });")
    lines.append("  }")
    return lines


def frame_events(header):
    """The number of arguments of each event that the frame raises, by the method's name."""
    found = re.findall(r"virtual void (raise_\w+)\(([^)]*)\)", header)
    return {name: len(split_arguments(arguments)) for name, arguments in found}


def event(member, of_frame):
    references, passed = [], []
    for a in member.arguments:
        base = a.type.rstrip("*")
        references.append(f"{base}{'*' if a.type.count('*') > 1 else ''}& {a.name}")
        passed.append(f"by_reference_bool({a.name})" if base == "VARIANT_BOOL" else f"by_reference({a.name})")
    method_name = f"raise_{snake(member.name)}"
    override = " override" if of_frame.get(method_name) == len(references) else ""
    return [
        f"  void {method_name}({', '.join(references)}){override} {{",
        f"    this->raise({member.id}, {{{', '.join(passed)}}});",
        "  }",
    ]


def main():
    source, out = Path(sys.argv[1]), Path(sys.argv[2])
    common = frame_events(Path(sys.argv[3]).read_text(encoding="utf-8"))
    text = strip_comments(source.read_text(encoding="utf-8"))
    lines = [
        f"// Made by tools/idl_glue.py from {source.name}; edit that instead.",
        "#pragma once",
        "",
        '#include "base/automation_win.h"',
        f'#include "contract/{source.stem}.h"',
        "",
        "namespace kestrelon {",
    ]
    for name in re.findall(r"\bcoclass\s+(\w+)", text):
        coclass = block(text, rf"\bcoclass\s+{name}\b")
        default = re.search(r"\[[^\]]*default[^\]]*\]\s*interface\s+(\w+)", coclass).group(1)
        source_name = re.search(r"source[^\]]*\]\s*(?:dispinterface|interface)\s+(\w+)", coclass)
        functions = members(block(text, rf"\binterface\s+{default}\b"))
        events = members(block(text, rf"\bdispinterface\s+{source_name.group(1)}\b")) if source_name else []
        is_control = re.search(rf"\[[^\]]*\bcontrol\b[^\]]*\]\s*coclass\s+{name}\b", without_strings(text))
        lines += [
            "",
            "template <class Class, class Base>",
            f"class {name}Glue : public ::{default}, public Base {{",
            " public:",
            "  using Base::Base;",
            "",
            "  static const ClassInfo& static_class_info() {",
            f'    static constexpr ClassInfo kInfo{{L"{name}", CLSID_{name}, IID_{default},',
            f"                                     {'&DIID_' + source_name.group(1) if source_name else 'nullptr'}}};",
            "    return kInfo;",
            "  }",
            "  const ClassInfo& class_info() const override { return static_class_info(); }",
            f"  IDispatch* dispatch() override {{ return static_cast<::{default}*>(this); }}",
            "",
            "  STDMETHODIMP QueryInterface(REFIID iid, void** out) override {",
            "    return this->outer_query(iid, out);",
            "  }",
            "  STDMETHODIMP_(ULONG) AddRef() override { return this->outer_add_ref(); }",
            "  STDMETHODIMP_(ULONG) Release() override { return this->outer_release(); }",
            "  STDMETHODIMP GetTypeInfoCount(UINT* count) override {",
            "    if (count == nullptr) return E_POINTER;",
            "    *count = 1;",
            "    return S_OK;",
            "  }",
            "  STDMETHODIMP GetTypeInfo(UINT index, LCID, ITypeInfo** out) override {",
            "    return this->get_type_info(index, out);",
            "  }",
            "  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {",
            "    return this->ids_of_names(iid, names, count, ids);",
            "  }",
            "  STDMETHODIMP Invoke(DISPID member, REFIID iid, LCID locale, WORD flags, DISPPARAMS* parameters,",
            "                      VARIANT* result, EXCEPINFO* exception, UINT* bad_argument) override {",
            f"    return this->invoke(static_cast<::{default}*>(this), member, iid, locale, flags, parameters,",
            "                        result, exception, bad_argument);",
            "  }",
            "",
        ]
        for member in functions:
            lines += method(member)
        lines += ["", " protected:"]
        for member in events:
            lines += event(member, common if is_control else {})
        lines += ["", " private:", "  Class& self() { return static_cast<Class&>(*this); }", "};"]
    lines += ["", "}  // namespace kestrelon", ""]
    out.parent.mkdir(parents=True, exist_ok=True)
    made = "\n".join(lines)
    if not out.exists() or out.read_text(encoding="utf-8") != made:
        out.write_text(made, encoding="utf-8")


if __name__ == "__main__":
    main()
