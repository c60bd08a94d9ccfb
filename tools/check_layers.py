#!/usr/bin/env python3
"""Checks what the compiler does not: who may include whom, and what the logic must not use.

Run from anywhere; prints one line for each fault, with what to do instead, and exits 1.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# The folders of the logic from the ground up. A file includes its own folder and what stands in a
# line above its own; folders of one line do not know each other.
RANKS = [
    ["base"],
    ["platform"],  # its interfaces; the adapters lie in folders below it
    ["core"],
    ["ui"],
    ["core/lists"],
    ["x10", "sun"],
    ["automation", "voice", "web"],
    ["api"],
    ["core/house"],
    ["core/program"],
]

# Everything else, with all that it may include. Adapters know the ground and the interfaces, and
# only the program's main knows adapters.
GROUND = ["base", "platform"]
OTHERS = {
    "platform/cm11": GROUND,
    "platform/desktop": GROUND + ["platform/qt"],
    "platform/http": GROUND,
    "platform/json": GROUND,
    "platform/linux": GROUND,
    "platform/qt": GROUND,
    "platform/serial": GROUND + ["platform/cm11", "platform/linux"],
    "platform/speech": GROUND + ["platform/qt"],
    "platform/speech/absent": GROUND + ["platform/speech"],
    "platform/store": GROUND,
    "platform/systemd": GROUND + ["platform/linux", "platform/qt"],
    "platform/windows": GROUND,
    "ui/qt": GROUND + ["core", "ui", "platform/qt"],
    "tools/emulator": GROUND + ["platform/cm11", "platform/linux"],
    "tools": GROUND + ["platform/linux", "tools/emulator"],
    "app/common": GROUND + ["core", "ui", "platform/cm11", "platform/http", "platform/json",
                            "platform/linux", "platform/qt", "platform/serial", "platform/store"],
    "app/demo": GROUND + ["core", "platform/cm11", "platform/linux", "platform/qt",
                          "tools/emulator"],
    "app/window": ["*"],
    "app/engine": GROUND + ["core", "core/program", "ui", "platform/linux", "platform/qt",
                          "app/common", "app/demo"],
    "tests": ["*"],
    "bench": ["*"],
}

# Libraries that one adapter alone knows.
ONLY_IN = {
    "microhttpd.h": "platform/http",
    "gnutls/crypto.h": "platform/http",
    "nlohmann/json.hpp": "platform/json",
    "pocketsphinx.h": "platform/speech",
    "flite/flite.h": "platform/speech",
    "sqlite3.h": "platform/store",
    "QSerialPort": "platform/serial",
    "xcb/xcb.h": "ui/qt",
    "systemd/sd-daemon.h": "app/engine",
}
WIDGETS_ONLY_IN = ("ui/qt", "app/window", "tests/window", "bench")

FORBIDDEN_IN_LOGIC = [
    (r"#include <(Q\w+|sqlite3\.h|microhttpd\.h|pocketsphinx\.h|windows\.h|unistd\.h|fcntl\.h"
     r"|sys/\w+\.h|poll\.h)",
     "put this behind an interface in platform/ with an adapter in a folder below it"),
    (r"#include <(thread|mutex|atomic|future|condition_variable|shared_mutex)>",
     "the logic runs on one thread; write an operation that waits (base/task.h)"),
    (r"sleep_for|sleep_until|\busleep\b", "co_await a pause or a Delay"),
    (r"system_clock|\blocaltime\b|\bstd::time\(|steady_clock",
     "take the time from the Clock that the constructor was given"),
    (r"std::(cout|cerr|clog)|\bprintf\(", "report through the status bar or a result"),
]
WIDGET_HEADER = re.compile(
    r"#include <(QApplication|Q\w*(?:Widget|Window|Dialog|Box|Layout|View|Label|Button|Menu"
    r"|Slider|Edit|Delegate|Splitter|Style))>")

LOGIC = [folder for rank in RANKS for folder in rank]


def allowed_folders():
    """Folder -> the folders it may include besides itself."""
    allowed = dict(OTHERS)
    below = []
    for rank in RANKS:
        for folder in rank:
            allowed[folder] = list(below)
        below += rank
    return allowed


def sources():
    for pattern in ("*.h", "*.cpp"):
        for path in ROOT.rglob(pattern):
            name = path.relative_to(ROOT).as_posix()
            if not name.startswith(("build/", ".")):
                yield name, path.read_text(encoding="utf-8")


def folder_of(name, allowed):
    """The listed folder that a file lies in directly; below tests and bench, those."""
    folder = name.rpartition("/")[0]
    top = folder.split("/")[0]
    if top in ("tests", "bench"):
        return top
    return folder if folder in allowed else None


def check_includes(name, included, allowed):
    folder = folder_of(name, allowed)
    if folder is None:
        yield f"{name}: its folder has no rank; give it one in tools/check_layers.py"
        return
    for target in included:
        home = folder_of(target, allowed)
        if home is None:
            yield f"{name}: includes {target}, whose folder has no rank"
        elif home != folder and "*" not in allowed[folder] and home not in allowed[folder]:
            yield (f"{name}: includes {target}; {folder} may include "
                   f"{', '.join(allowed[folder]) or 'nothing else'}")


def check_libraries(name, text):
    for header, home in ONLY_IN.items():
        if f"#include <{header}>" in text and not name.startswith((home + "/", "tests/", "bench/")):
            yield f"{name}: includes {header}; only {home} may: use what it offers"
    widget = WIDGET_HEADER.search(text)
    if widget and not name.startswith(WIDGETS_ONLY_IN):
        yield f"{name}: includes {widget[1]}; widgets live in ui/qt"


def check_words(name, text):
    if name.rpartition("/")[0] not in LOGIC:
        return
    for number, line in enumerate(text.splitlines(), 1):
        code = line.split("//")[0]
        for pattern, advice in FORBIDDEN_IN_LOGIC:
            if re.search(pattern, code):
                yield f"{name}:{number}: {line.strip()}: {advice}"


def circles(includes):
    """Circles among the keys of a graph, each as a text."""
    state = {}
    found = []

    def visit(name, path):
        state[name] = "open"
        for target in sorted(includes.get(name, ())):
            if state.get(target) == "open":
                found.append(" -> ".join(path[path.index(target):] + [target]))
            elif target not in state and target in includes:
                visit(target, path + [target])
        state[name] = "done"

    for name in sorted(includes):
        if name not in state:
            visit(name, [name])
    return found


def main():
    allowed = allowed_folders()
    faults = []
    files = {}
    folders = {}
    for name, text in sources():
        included = re.findall(r'#include "([^"]+)"', text)
        files[name] = included
        homes = {folder_of(target, allowed) for target in included}
        folders.setdefault(folder_of(name, allowed), set()).update(homes)
        faults += check_includes(name, included, allowed)
        faults += check_libraries(name, text)
        faults += check_words(name, text)
    for folder, homes in folders.items():
        homes.discard(folder)
    faults += [f"files include each other in a circle: {circle}" for circle in circles(files)]
    faults += [f"folders include each other in a circle: {circle}" for circle in circles(folders)]
    for fault in sorted(faults):
        print(fault)
    print(f"layers: {len(files)} files in {len(folders)} folders, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
