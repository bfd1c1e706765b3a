#!/usr/bin/env python3
"""Checks of the sources' text that no compiler makes. One line for each fault, exit status 1 if any.

    check_tree.py includes    includes run downwards only, between the rooms of shell/ too, and the
                              engine is free of the platform
    check_tree.py first       a source includes its own header first
    check_tree.py circles     no module (a header and its source) includes one that leads back to it
    check_tree.py sources     no program compiles a source out of another folder than its own
    check_tree.py seam        core/host_*.h name the sources that define their functions, and no other,
                              and in brackets behind a source functions that it defines
    check_tree.py style       a module's variables are one static struct outside of namespaces, whose
                              tag no other source has; const stands left of types in capitals too,
                              which the formatter passes over
"""

import os
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# What each folder may include, itself apart.
BELOW = {
    "core": set(),
    "platform": {"core"},
    "web": {"core"},
    "report": {"core", "web"},
    "file": {"core", "web"},
    "program": {"core", "web", "report", "file"},
    "cli": {"core", "web", "report", "file", "program", "platform", "pane"},
    "shell": {"core", "web", "report", "file", "program", "platform", "resources", "desktop"},
    "desktop": {"resources"},
    "handheld": {"desktop"},
    "pane": set(),
    "resources": set(),
}
ENGINE = {"core", "web", "report", "file", "program"}

# All that a folder may include of another one, where that is not everything. Of desktop/, a shell
# source may know only what the handheld can have too; of the small component, qvx knows what makes
# words.
ONLY = {
    ("cli", "pane"): {"pane/characters.h"},
    ("cli", "platform"): {"platform/editor.h", "platform/lock.h", "platform/program.h"},
    ("platform", "core"): {"core/host_files.h"},
    ("shell", "desktop"): {"desktop/frame.h"},
    ("handheld", "desktop"): {"desktop/frame.h"},
    ("shell", "platform"): {"platform/windows/text_conversion.h"},
}

# Rooms of platform/: each is for one system, and only itself and the shell know of one. The
# handheld's stands on what the other Windows has in common with it.
ROOMS = ("platform/posix/", "platform/windows/", "platform/handheld/")
COMMON = {"platform/handheld/": {"platform/windows/common.h",
                                 "platform/windows/text_conversion.h"}}

# Folders in which no module may lead back to itself.
WITHOUT_CIRCLES = ENGINE | {"platform", "shell", "desktop", "handheld", "pane", "cli"}

# The rooms of shell/: which other rooms each may include. "" is what stands in shell/ itself, at the
# top.
SHELL_ROOMS = {
    "base": set(),
    "panes": {"base"},
    "find": {"base", "panes"},
    "settings": {"base", "panes", "find"},
    "dialogs": {"base", "find", "settings"},
    "": {"base", "panes", "find", "settings", "dialogs"},
}

# Headers of the language that the engine may use: none that brings exceptions, streams, memory
# management of its own or the platform.
ENGINE_SYSTEM_HEADERS = {
    "algorithm", "array", "bit", "cctype", "cfloat", "climits", "cmath", "csetjmp", "cstdarg",
    "cstddef", "cstdint", "cstdio", "cstdlib", "cstring", "initializer_list", "iterator", "limits",
    "span", "string_view", "type_traits", "utility",
}

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def sources():
    for folder in BELOW:
        for path in sorted((ROOT / folder).rglob("*")):
            if path.suffix in (".cpp", ".h"):
                yield folder, path


def includes_of(path):
    """Yields (line number, whether quoted, name)."""
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        match = INCLUDE.match(line)
        if match:
            yield number, match[1] == '"', match[2]


def room_of(name):
    return next((room for room in ROOMS if name.startswith(room)), "")


def include_fault(path, folder, quoted, name):
    if not quoted:
        if folder in ENGINE and name not in ENGINE_SYSTEM_HEADERS:
            return f"the engine does not use <{name}>"
        return None
    other = name.split("/")[0]
    if not (ROOT / name).is_file():
        return f'"{name}" is not spelled from the root'
    if other != folder and other not in BELOW[folder]:
        return f"{folder}/ does not include {other}/"
    if other != folder and name not in ONLY.get((folder, other), {name}):
        return f'"{name}" is not for {folder}/'
    if (folder == "platform" and room_of(name) not in ("", room_of(path))
            and name not in COMMON.get(room_of(path), ())):
        return f'"{name}" is for {room_of(name)} alone'
    return None


def shell_room(name):
    """The room of a file of shell/, by its path from the root."""
    parts = name.split("/")
    return parts[1] if len(parts) > 2 else ""


def room_fault(name, other):
    """What is wrong when the file `name` includes `other`; both by their paths from the root."""
    if not (name.startswith("shell/") and other.startswith("shell/")):
        return None
    room, below = shell_room(name), shell_room(other)
    if room not in SHELL_ROOMS:
        return f"shell/{room}/ has no row in SHELL_ROOMS"
    if below != room and below not in SHELL_ROOMS[room]:
        return f"shell/{room} does not include shell/{below}"
    return None


def check_includes():
    for folder, path in sources():
        for number, quoted, name in includes_of(path):
            relative = str(path.relative_to(ROOT))
            fault = include_fault(relative, folder, quoted, name) or room_fault(relative, name)
            if fault:
                yield f"{relative}:{number}: {fault}"


def check_first():
    for _, path in sources():
        own = path.with_suffix(".h")
        if path.suffix != ".cpp" or not own.is_file():
            continue
        first = next((name for _, _, name in includes_of(path)), None)
        if first != str(own.relative_to(ROOT)):
            yield f"{path.relative_to(ROOT)}: its own header is not included first"


def modules():
    """Returns {module: the modules that its header or its source includes}."""
    graph = {}
    for folder, path in sources():
        if folder in WITHOUT_CIRCLES:
            module = str(path.relative_to(ROOT).with_suffix(""))
            used = graph.setdefault(module, set())
            used |= {name.removesuffix(".h") for _, quoted, name in includes_of(path) if quoted}
            used.discard(module)
    return graph


def way_back(graph, module):
    """Returns the modules on a shortest way from this one to itself, [] when there is none."""
    ways, seen = [[module]], set()
    for way in ways:
        for used in sorted(graph.get(way[-1], ())):
            if used == module:
                return way
            if used not in seen:
                seen.add(used)
                ways.append([*way, used])
    return []


def check_circles():
    graph = modules()
    for module in sorted(graph):
        circle = way_back(graph, module)
        if circle and module == min(circle):
            yield f"{' -> '.join([*circle, module])}: a circle"


# ---- The lists of sources -----------------------------------------------------------------------


def build_lists():
    yield from [ROOT / "CMakeLists.txt", *sorted((ROOT / "cmake").glob("*.cmake"))]
    for folder in (*BELOW, "tests", "bench"):
        yield from sorted((ROOT / folder).rglob("CMakeLists.txt"))


def sources_named(path):
    """Yields (line number, path) of each source in a list, those of other projects apart."""
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        for word in re.findall(r'[^\s()"]+\.(?:cpp|cc|c|rc)\b', line.partition("#")[0]):
            word = re.sub(r"^\$\{(PROJECT|CMAKE)_SOURCE_DIR\}/", f"{ROOT}/", word)
            word = word.removeprefix("${CMAKE_CURRENT_SOURCE_DIR}/")
            if not word.startswith("${"):
                folder = path.parent if path.name == "CMakeLists.txt" else ROOT
                yield number, pathlib.Path(os.path.normpath(folder / word))


def check_sources():
    """The root's lists are the engine's; any other names what lies in its own folder."""
    for path in build_lists():
        own = [ROOT / folder for folder in ENGINE]
        if path.name == "CMakeLists.txt" and path.parent != ROOT:
            own = [path.parent]
        for number, source in sources_named(path):
            if not any(source.is_relative_to(folder) for folder in own):
                shown = source.relative_to(ROOT) if source.is_relative_to(ROOT) else source
                yield f"{path.relative_to(ROOT)}:{number}: {shown} is another folder's: link its target"


# ---- The seam -----------------------------------------------------------------------------------


def programs_sources():
    """Yields every source that may define a function of the seam."""
    for folder in ("file", "cli", "platform", "shell"):
        yield from sorted((ROOT / folder).rglob("*.cpp"))
    yield from (ROOT / "tests/engine/recorder.cpp", ROOT / "tests/shell/shell_test.cpp")


def named_functions(path):
    """Yields (source, function, whether it is only how names begin) of the header's first lines."""
    comment, _, _ = path.read_text(encoding="utf-8").partition("#pragma once")
    comment = re.sub(r"\n//\s*", " ", comment)
    for name, functions in re.findall(r"([\w/]+\.cpp) \(([^)]*)\)", comment):
        for function, more in re.findall(r"(\w+_\w*)(\.\.\.)?", functions):
            yield name, function, more


def check_seam():
    """A name in brackets may stand for all that begin with it: file_replace_..."""
    texts = {str(path.relative_to(ROOT)): path.read_text(encoding="utf-8")
             for path in programs_sources()}
    for path in sorted((ROOT / "core").glob("host_*.h")):
        _, _, rest = path.read_text(encoding="utf-8").partition("#pragma once")
        declared = re.findall(r"^(?!//)[^\n(]*?\b(\w+)\([^;{]*\);", rest, re.MULTILINE)
        by_name = r"^(?:\w.*[ *]|LOGGED\()(?:" + "|".join(declared) + r")[()].*"
        named = set(re.findall(r"[\w/]+\.cpp", path.read_text(encoding="utf-8")))
        lines = {name: [line for line in re.findall(by_name, text, re.MULTILINE)
                        if line[-1] in "{}" or line.startswith("LOGGED")]
                 for name, text in texts.items()}
        defining = {name for name, found in lines.items() if found}
        for name, function, more in named_functions(path):
            own = re.compile(rf"\b{function}" + (r"\w*[()]" if more else "[()]"))
            if not any(own.search(line) for line in lines.get(name, ())):
                yield f"{path.relative_to(ROOT)}: {name} does not define {function}{more}()"
        for name in sorted(defining ^ named):
            fault = "is not named" if name in defining else "defines none of these functions"
            yield f"{path.relative_to(ROOT)}: {name} {fault}"


# ---- What the formatter and the compiler let pass -----------------------------------------------


def variables_of(text):
    """Yields (line number, declaration, its struct's tag or "", whether in the nameless namespace) of
    what a source declares at the start of a line."""
    inside, head = False, None
    for number, line in enumerate(text.splitlines(), 1):
        if line.startswith(("namespace {", "}  // namespace")):
            inside = line.startswith("namespace")
        struct = re.match(r"(static (?:constinit )?)?struct (\w+) (?:final.*)?\{", line)
        if struct:
            head = (number, line, struct[2], inside)
        if head and re.match(r"(?:\S.*)?\} \w+", line):
            yield head
        elif re.match(r"(?!const|using|struct|enum|extern|typedef|template|namespace)\w[\w:<>, *]* \*?\w+"
                      r"(\[.*\])?( = [^()]*|\{.*\})?;", line):
            yield number, line, "", inside
        if line.startswith("}") or line.endswith(";") and not line.startswith(" "):
            head = None


def state_faults(path, tags):
    name = path.relative_to(ROOT)
    for number, line, tag, inside in variables_of(path.read_text(encoding="utf-8")):
        if inside or not tag and line.startswith("static"):
            yield f"{name}:{number}: state stands in a static struct outside of namespaces"
        elif tag and not line.startswith("static"):
            yield f"{name}:{number}: {tag} is static"
        elif tag and tags.setdefault(tag, name) != name:
            yield f"{name}:{number}: {tags[tag]} has a struct {tag} too"


def check_style():
    tags = {}
    for folder, path in sources():
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            if folder != "platform" and re.search(r"\b[A-Z][A-Z0-9_]{2,} const [a-z]", line):
                yield f"{path.relative_to(ROOT)}:{number}: const stands left of the type"
        if folder != "platform" and path.suffix == ".cpp":
            yield from state_faults(path, tags)


def main(arguments):
    checks = {"includes": check_includes, "first": check_first, "circles": check_circles,
              "sources": check_sources, "seam": check_seam, "style": check_style}
    if len(arguments) != 1 or arguments[0] not in checks:
        sys.exit(__doc__)
    faults = list(checks[arguments[0]]())
    print("\n".join(faults))
    sys.exit(1 if faults else 0)


main(sys.argv[1:])
