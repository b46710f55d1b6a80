#!/usr/bin/env python3
"""Fails when an #include points upward or sideways between the layers of the tree.

  check_layers.py [ROOT]

Quoted includes are named from src/ (or from tools/tqsync/ inside the tool, tests/ inside tests and
so on). Besides the layers, two rules keep the platform in its place: no file outside src/platform/
asks which system it is compiled for, and its two halves do not know each other.
"""

import re
import sys
from pathlib import Path

FAMILIES = ["syncfile", "appinfo", "syncfld", "ctd", "linkinfo", "history", "backup", "csvinfo",
            "dbbridge", "textutil", "ui"]
LOWEST = ["base"]
PLATFORM = LOWEST + ["platform"]
COMMON = PLATFORM + ["common"]
SIBLINGS = COMMON + ["siblings"]

# Folder of src/ -> folders of src/ that its files may include, besides their own.
MAY_INCLUDE = {
    "base": LOWEST,
    "platform": PLATFORM,
    "common": COMMON,
    "siblings": SIBLINGS,
    **{family: SIBLINGS for family in FAMILIES},
    "api": SIBLINGS + FAMILIES + ["api"],
}
# These know nothing of the library's own interface beyond its calling conventions.
BELOW_THE_INTERFACE = ["base", "platform", "common"]
# Headers that every family may include: the ids that all of them key their tables by.
SHARED_BY_FAMILIES = ["syncfile/sync_id.h"]
# Inside tqsync: decisions do not print, readers do not decide.
TOOL_MAY_INCLUDE = {
    "text": ["text"],
    "files": ["files", "text"],
    "engine": ["engine", "files", "text"],
    "library": ["library", "engine", "files", "text"],
    "terminal": ["terminal", "text"],
}

# Folders that may look inside the library, each with its own quoted headers.
INSIDERS = ["tests", "bench", "fuzz"]
INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]')
SYSTEM_TEST = re.compile(r"^\s*#\s*(?:if|ifdef|ifndef|elif)\b.*\b"
                         r"(_WIN32|_WIN64|WIN32|__linux__|__unix__|__MINGW32__|__APPLE__)\b")
SYSTEM_TEST_ALLOWED = ["src/platform/", "include/tqutil/config.h"]


def main():
    root = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).resolve().parent.parent)
    problems, files = [], 0
    for folder in ["include", "src", "tools", *INSIDERS]:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in (".h", ".cpp", ".c", ".inc"):
                files += 1
                problems += check_file(root, path.relative_to(root))
    for problem in problems:
        print(problem)
    print(f"layers: {files} files, {len(problems)} wrong includes")
    return 1 if problems or not files else 0


def check_file(root, path):
    allowed_to_ask = path.as_posix().startswith(tuple(SYSTEM_TEST_ALLOWED))
    for number, line in enumerate((root / path).read_text(encoding="utf-8").splitlines(), 1):
        where = f"{path.as_posix()}:{number}"
        if not allowed_to_ask and path.parts[0] in ("src", "include") and SYSTEM_TEST.match(line):
            yield f"{where}: asks for the system outside src/platform: {line.strip()}"
        include = INCLUDE.match(line)
        if include:
            reason = why_not(root, path, include[1] == '"', include[2])
            if reason:
                yield f"{where}: includes {include[2]}: {reason}"


def why_not(root, path, quoted, target):
    """What is wrong with this include, None when nothing is."""
    place, public = path.parts[0], target.startswith("tqutil/")
    if public:
        if not (root / "include" / target).exists():
            return "no such public header"
        if place == "src" and path.parts[1] in BELOW_THE_INTERFACE and target != "tqutil/config.h":
            return f"src/{path.parts[1]} is below the public interface"
        return None
    if not quoted:
        return None
    if ".." in target:
        return "name it from the top folder"
    if place == "include":
        return "public headers include public and standard headers only"
    if place == "tools":
        return why_not_in_tool(root, path, target)
    if place in INSIDERS:
        homes = [root / place, root / "src", root / "tests", (root / path).parent]
        if path.parts[1] == "tqsync":
            homes.append(root / "tools" / "tqsync")
        return None if any((home / target).exists() for home in homes) else "no such header"
    return why_not_in_library(root, path, target)


def why_not_in_library(root, path, target):
    if not (root / "src" / target).exists():
        return "no such header under src/"
    own, other = path.parts[1], Path(target).parts[0]
    if own not in MAY_INCLUDE:
        return f"src/{own} is no layer that this check knows"
    if own in FAMILIES and target in SHARED_BY_FAMILIES:
        return None
    if other != own and other not in MAY_INCLUDE[own]:
        return f"src/{own} may include only {', '.join(MAY_INCLUDE[own])} and its own headers"
    if own == other == "platform":
        half = [name for name in ("posix", "win32") if name in Path(target).parts]
        if half and half[0] not in path.parts:
            return f"belongs to the {half[0]} half of the platform"
    return None


def why_not_in_tool(root, path, target):
    tool = root.joinpath(*path.parts[:2])
    if not (tool / target).exists() and not (root / path).parent.joinpath(target).exists():
        return f"{path.parts[1]} includes public headers and its own only"
    layer, other = path.parts[2], Path(target).parts[0]
    if layer in TOOL_MAY_INCLUDE and (tool / target).exists() and "/" in target:
        if other not in TOOL_MAY_INCLUDE[layer]:
            return f"{layer}/ may include only {', '.join(TOOL_MAY_INCLUDE[layer])}/"
    return None


if __name__ == "__main__":
    sys.exit(main())
