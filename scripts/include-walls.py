#!/usr/bin/env python3
"""include-walls.py [FOLDER]: holds what a file may include of the tree.

Arrows point down only. The linker sees a part of that; this sees all of it.
"""
import re
import subprocess
import sys
from pathlib import Path

SCREENS = ["OverviewView", "ProcessesView", "ProcessDetail", "BackgroundItemsView", "InternetView",
           "UsageView", "BrowserPanel", "Onboarding", "SettingsView", "MenuBarView"]
LIVED = ["Scheduler", "Monitor", "Router", "FixActions", "AppUpdater", "AppPreferences", "Support"]
LOWEST = ["Core/Support", "Core/Platform"]


def app(*folders):
    return ["PaceletApp/" + folder for folder in folders]


# Who may include what: the first row that a file's path begins with decides. A folder may always
# include itself.
WALLS = [
    ("Core/Support/", []),
    ("Core/Platform/", ["Core/Support"]),
    ("Core/Sampling/", LOWEST),
    ("Core/Knowledge/", LOWEST + ["Core/Sampling"]),
    ("Core/Internet/", LOWEST + ["Core/Sampling"]),
    ("Core/Usage/", LOWEST + ["Core/Sampling", "Core/Diagnosis"]),
    ("Core/Inspectors/", LOWEST + ["Core/Sampling"]),
    ("Core/Fixes/", LOWEST + ["Core/Sampling"]),
    ("Core/Browser/", LOWEST + ["Core/Fixes"]),
    ("Core/", LOWEST + ["Core/Sampling", "Core/Knowledge", "Core/Internet"]),
    ("Hosts/Posix/", LOWEST),
    ("Hosts/", LOWEST + ["Hosts/Posix", "Hosts/Script"]),
    *[(f"PaceletApp/{folder}/", ["Core"] + app(*LIVED)) for folder in LIVED],
    ("PaceletApp/Models/", ["Core", "PaceletApp/Support"]),
    ("PaceletApp/Components/", ["Core"] + app("Models", *LIVED)),
    ("PaceletApp/ProcessesView/", ["Core"] + app("Components", "Models", "ProcessDetail", *LIVED)),
    *[(f"PaceletApp/{screen}/", ["Core"] + app("Components", "Models", *LIVED))
      for screen in SCREENS],
    # The frame and the program around it know every screen.
    ("PaceletApp/", ["Core", "PaceletApp"]),
]
# Made by the build.
GENERATED = {"PaceletApp/Version.h", "PaceletApp/Websites.h"}
# A host of its own folder below Hosts is a house of its own.
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.M)


def home_of(path):
    """The folder that a file belongs to and may include freely: two levels deep."""
    parts = path.split("/")
    return "/".join(parts[:2]) + "/"


def breaches(root):
    files = subprocess.run(["git", "ls-files", "*.h", "*.cpp"], cwd=root, check=True,
                           capture_output=True, text=True).stdout.split()
    for file in files:
        wall = next((wall for wall in WALLS if file.startswith(wall[0])), None)
        if wall is None:
            continue
        allowed = [folder + "/" for folder in wall[1]] + [home_of(file)]
        for included in INCLUDE.findall((Path(root) / file).read_text()):
            if included in GENERATED or "/" not in included:
                continue
            if not any(included.startswith(folder) for folder in allowed):
                yield f"{file} includes {included}"


def main():
    root = sys.argv[1] if len(sys.argv) > 1 else "."
    found = list(breaches(root))
    for line in found:
        print(line)
    print(f"include walls: {len(found)} breached")
    return 1 if found else 0


sys.exit(main())
