#!/usr/bin/env python3
"""Checks what the compiler does not: who may include whom, and what the logic must not use.

Run from anywhere; prints one line for each fault, with what to do instead, and exits 1.
"""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

LOGIC = ("core/", "x10/", "automation/", "sun/", "web/", "ui/", "base/")
# Which folders a folder may include; the longest name that fits a file counts.
MAY_INCLUDE = {
    "base/": ("base/", "platform/files.h"),
    "platform/": ("base/", "platform/"),
    "core/": ("base/", "platform/", "ui/", "core/", "x10/", "automation/", "sun/", "web/"),
    "x10/": ("base/", "platform/", "ui/", "core/", "x10/"),
    "automation/": ("base/", "platform/", "ui/", "core/", "x10/", "automation/", "sun/"),
    "sun/": ("base/", "platform/", "ui/", "core/", "sun/"),
    "web/": ("base/", "platform/", "ui/", "core/", "x10/", "web/"),
    "ui/": ("base/", "platform/", "ui/", "core/", "x10/"),
    "ui/qt/": ("base/", "platform/", "ui/", "core/version.h"),
    "ui/qt/app/": ("",),
    "tools/": ("base/", "platform/", "tools/"),
}
NO_INTERFACES_BELOW = re.compile(r"^platform/\w+/")

# Libraries that one adapter alone knows.
ONLY_BELOW = {"microhttpd.h": "platform/http/"}

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


def sources():
    for pattern in ("*.h", "*.cpp"):
        for path in ROOT.rglob(pattern):
            name = path.relative_to(ROOT).as_posix()
            if not name.startswith(("build/", ".")):
                yield name, path.read_text(encoding="utf-8")


def rule_of(name):
    fitting = [folder for folder in MAY_INCLUDE if name.startswith(folder)]
    return max(fitting, key=len) if fitting else None


def check_libraries(name, text):
    for header, home in ONLY_BELOW.items():
        if f"#include <{header}>" in text and not name.startswith(home):
            yield f"{name}: includes {header}; only {home} may: use what it offers"


def is_logic(name):
    return name.startswith(LOGIC) and not name.startswith("ui/qt/")


def check_includes(name, included):
    rule = rule_of(name)
    if rule is None:
        return
    for target in included:
        if not target.startswith(MAY_INCLUDE[rule]):
            yield f"{name}: includes {target}; {rule} may include {', '.join(MAY_INCLUDE[rule])}"
        elif is_logic(name) and NO_INTERFACES_BELOW.match(target):
            yield f"{name}: includes the adapter {target}; use its interface in platform/"


def check_words(name, text):
    if not is_logic(name):
        return
    for number, line in enumerate(text.splitlines(), 1):
        code = line.split("//")[0]
        for pattern, advice in FORBIDDEN_IN_LOGIC:
            if re.search(pattern, code):
                yield f"{name}:{number}: {line.strip()}: {advice}"


def circles(includes):
    state = {}
    found = []

    def visit(name, path):
        state[name] = "open"
        for target in includes.get(name, ()):
            if state.get(target) == "open":
                found.append(" -> ".join(path[path.index(target):] + [target]))
            elif target not in state and target in includes:
                visit(target, path + [target])
        state[name] = "done"

    for name in includes:
        if name not in state:
            visit(name, [name])
    return found


def main():
    faults = []
    includes = {}
    for name, text in sources():
        included = re.findall(r'#include "([^"]+)"', text)
        includes[name] = included
        faults += check_includes(name, included)
        faults += check_libraries(name, text)
        faults += check_words(name, text)
    faults += [f"files include each other in a circle: {circle}" for circle in circles(includes)]
    for fault in sorted(faults):
        print(fault)
    print(f"layers: {len(includes)} files, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
