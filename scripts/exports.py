#!/usr/bin/env python3
"""Turns src/api/exports.txt into what the linkers want, and compares built libraries with it.

  exports.py gen-version-script LIST OUT         version script for libtqutil.so
  exports.py gen-def LIST OUT --bits 32|64 [--nm NM] --objects OBJECT...
                                                 .def file for tqutil.dll
  exports.py gen-import-def LIST OUT --bits 32 [--nm NM] --objects OBJECT...
                                                 .def for dlltool: the 32-bit import library
  exports.py check LIST LIBRARY --format elf|pe32|pe64 [--nm NM] [--objdump OBJDUMP]

Class members are listed by signature, static data members by name. The Linux linker takes both as
they are; for the DLL the mangled names come from the compiled objects, which is also where a
misspelt one shows.
"""

import argparse
import re
import subprocess
import sys
from typing import NamedTuple


class Entry(NamedTuple):
    kind: str  # "cdecl", "stdcall", "stdcall-bare", "member" or "data"
    name: str  # function name, a member's signature, or a data member's qualified name
    size: int  # bytes of arguments, stdcall only
    where: str  # file and line, for messages

    @property
    def mangled(self):
        return self.kind in ("member", "data")

    def exported(self, form):
        """The name that a library of this form ("elf", "pe32", "pe64") exports."""
        if self.kind == "stdcall" and form == "pe32":
            return f"_{self.name}@{self.size}"
        return self.name


def main():
    args = parse_arguments()
    entries = read_list(args.list)
    if args.command == "gen-version-script":
        return write(args.out, version_script(entries))
    if args.command == "gen-def":
        return write(args.out, def_file(entries, args))
    if args.command == "gen-import-def":
        return write(args.out, "LIBRARY tqutil.dll\n" + def_file(entries, args, for_import=True))
    return check(entries, args)


def read_list(path):
    entries, seen = [], {}
    with open(path, encoding="utf-8") as lines:
        for number, line in enumerate(lines, 1):
            text = line.strip()
            if not text or text.startswith("#"):
                continue
            entry = parse_line(text, f"{path}:{number}")
            if entry.name in seen:
                fail(f"{entry.where}: {entry.name} stands at {seen[entry.name]} already")
            seen[entry.name] = entry.where
            entries.append(entry)
    return entries


def parse_line(text, where):
    kind, _, rest = text.partition(" ")
    if kind == "cdecl" and re.fullmatch(r"\w+", rest):
        return Entry(kind, rest, 0, where)
    sized = re.fullmatch(r"(\w+) (\d+)", rest)
    if kind in ("stdcall", "stdcall-bare") and sized:
        if int(sized[2]) % 4:
            fail(f"{where}: the bytes of the arguments are a multiple of 4")
        return Entry(kind, sized[1], int(sized[2]), where)
    if kind == "member" and "::" in rest and "(" in rest:
        return Entry(kind, rest, 0, where)
    if kind == "data" and re.fullmatch(r"\w+::\w+", rest):
        return Entry(kind, rest, 0, where)
    return fail(f"{where}: cannot read '{text}'")


def version_script(entries):
    """Only what is listed stays global; instantiations of the standard library's templates do not."""
    flat = [f"    {e.name};\n" for e in entries if not e.mangled]
    members = [f'      "{e.name}";\n' for e in entries if e.mangled]
    text = "{\n"
    if entries:
        text += "  global:\n" + "".join(flat)
    if members:
        text += '    extern "C++" {\n' + "".join(members) + "    };\n"
    return text + "  local: *;\n};\n"


def def_file(entries, args, for_import=False):
    """In 32-bit objects a stdcall function is the symbol Name@N, and the export table gets _Name@N
    or Name. The linker takes that as `exported = symbol`. Its import library then knows the exported
    name only; callers refer to the symbol, so dlltool makes it instead, from `symbol == exported`.
    """
    lines = []
    mangled = {}
    if any(entry.mangled for entry in entries):
        mangled = mangled_names(args.nm, args.objects, args.bits)
    for entry in entries:
        if entry.mangled:
            if entry.name not in mangled:
                fail(f"{entry.where}: nothing compiled is called {entry.name}")
            mark = " DATA" if entry.kind == "data" else ""
            lines += [name + mark for name in sorted(mangled[entry.name])]
        elif entry.kind == "cdecl" or args.bits == 64:
            lines.append(entry.name)
        else:
            symbol, exported = f"{entry.name}@{entry.size}", f'"{entry.exported("pe32")}"'
            lines.append(f"{symbol} == {exported}" if for_import else f"{exported} = {symbol}")
    return "EXPORTS\n" + "".join(f"  {line}\n" for line in lines)


def mangled_names(nm, objects, bits):
    """Signature -> mangled names (a constructor has several) of what the objects define."""
    names = set()
    for line in run(nm, "--defined-only", *objects).splitlines():
        fields = line.split()
        if len(fields) == 3 and fields[1] in "TWBDR":
            names.add(fields[2].removeprefix("_") if bits == 32 else fields[2])
    names = sorted(name for name in names if name.startswith("_Z"))
    result = {}
    for name, signature in zip(names, demangle(names)):
        result.setdefault(signature, set()).add(name)
    return result


def check(entries, args):
    wanted = {entry.exported(args.format) for entry in entries}
    found = elf_exports(args) if args.format == "elf" else pe_exports(args)
    signatures = dict(zip(found, demangle(found)))
    missing = sorted(wanted - set(signatures.values()))
    extra = sorted(name for name in found if signatures[name] not in wanted)
    for name in missing:
        print(f"in the list but not exported: {name}")
    for name in extra:
        print(f"exported but not in the list: {name} ({signatures[name]})")
    print(f"{args.library}: {len(found)} exports, {len(entries)} in the list, "
          f"{len(missing)} missing, {len(extra)} extra")
    return 1 if missing or extra else 0


def elf_exports(args):
    table = run(args.nm, "--dynamic", "--defined-only", args.library)
    return sorted({line.split()[2].partition("@")[0] for line in table.splitlines()})


def pe_exports(args):
    """Names of the export table; its rows read `[   0] Name` or `[   0] +base[   1]  0000 Name`."""
    table = run(args.objdump, "-p", args.library).partition("[Ordinal/Name Pointer] Table")[2]
    names = []
    for line in table.splitlines()[1:]:
        row = re.match(r"\s*\[\s*\d+\]\s+(?:\+base\[\s*\d+\]\s+[0-9a-f]+\s+)?(\S+)$", line)
        if not row:
            break
        names.append(row[1])
    if len(names) != len(set(names)):
        fail(f"{args.library}: the export table holds a name twice")
    return sorted(names)


def demangle(names):
    """c++filt, one name a line. Flat names come back as they are."""
    if not names:
        return []
    done = subprocess.run(["c++filt", "--no-strip-underscore"], input="\n".join(names), text=True,
                          capture_output=True, check=True)
    return done.stdout.splitlines()


def run(*command):
    done = subprocess.run(command, text=True, capture_output=True, check=False)
    if done.returncode:
        fail(f"{command[0]}: {done.stderr.strip()}")
    return done.stdout


def write(path, text):
    with open(path, "w", encoding="ascii") as out:
        out.write(text)
    return 0


def fail(message):
    sys.exit(f"exports.py: {message}")


def parse_arguments():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("command",
                        choices=["gen-version-script", "gen-def", "gen-import-def", "check"])
    parser.add_argument("list")
    parser.add_argument("out", metavar="OUT or LIBRARY")
    parser.add_argument("--bits", type=int, choices=[32, 64], default=64)
    parser.add_argument("--format", choices=["elf", "pe32", "pe64"], default="elf")
    parser.add_argument("--nm", default="nm")
    parser.add_argument("--objdump", default="objdump")
    parser.add_argument("--objects", nargs="*", default=[])
    args = parser.parse_args()
    args.library = args.out
    return args


if __name__ == "__main__":
    sys.exit(main())
