#!/usr/bin/env python3
"""Checks the dynamic symbols of libquvra.so against the public headers.

Every exported name must be declared with QV_API in export_inc/ (or belong to
the generated GL loader surface), no C++ name may leak out, and every
declared boundary function must really be exported.
"""
import pathlib
import re
import subprocess
import sys

# The GL loader's generated surface is exported by name pattern.
LOADER_PATTERNS = [r"glad_gl\w+", r"GLAD_GL_\w+", r"qvgl\w+", r"gladLoad\w+", r"GLVersion"]
# The APT tool's members are the only C++ names hosts may see.
CXX_PATTERNS = [r"mech::apt_t::\w+(=)?\(", r"mech::apt_derivative_t::apt_derivative_t\("]


def demangled(name):
    return subprocess.run(["c++filt", name], check=True, capture_output=True, text=True).stdout.strip()


def exported_symbols(library):
    out = subprocess.run(["nm", "-D", "--defined-only", library], check=True,
                         capture_output=True, text=True).stdout
    return {line.split()[-1] for line in out.splitlines() if line.strip()}


def declared_functions(include_dir):
    names = set()
    decl = re.compile(r"QV_API\b[^;{]*?\b(\w+)\s*\(", re.S)
    for header in pathlib.Path(include_dir).rglob("*"):
        if header.is_file():
            text = re.sub(r"__attribute__\s*\(\(.*?\)\)", "", header.read_text(errors="replace"))
            names.update(decl.findall(text))
    return names


def main(library, include_dir):
    exported = exported_symbols(library)
    declared = declared_functions(include_dir)
    loader = re.compile("|".join(f"(?:{p})$" for p in LOADER_PATTERNS))
    problems = []
    for name in sorted(exported):
        if name.startswith("_Z"):
            if not any(re.match(p, demangled(name)) for p in CXX_PATTERNS):
                problems.append(f"C++ symbol leaks out: {name}")
        elif name not in declared and not loader.match(name):
            problems.append(f"exported but not declared in a public header: {name}")
    for name in sorted(declared - exported):
        problems.append(f"declared but not exported: {name}")
    for p in problems:
        print(p)
    print(f"{len(exported)} exported symbols, {len(declared)} declared boundary functions")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2]))
