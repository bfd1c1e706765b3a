"""Runs the handheld's program on this machine: see device.py and, for the steps, commands.py.

    python3 -m handheld.emulator --exe FILE [--dll FILE] [--folder FOLDER] [--script FILE]
                                 [--picture FILE.png] [--log FILE] [--count] [WEB]

WEB is opened; its folder, or FOLDER, is the device's \\My Documents. Without a script
the steps are typed, unless there is only a picture to take.
"""

import argparse
import pathlib
import sys
import tempfile

from handheld.emulator import commands
from handheld.emulator.device import Device
from handheld.emulator.looking import Unexpected
from handheld.emulator.memory import Fault


def read_arguments():
    parser = argparse.ArgumentParser(prog="python3 -m handheld.emulator",
                                     formatter_class=argparse.RawDescriptionHelpFormatter,
                                     description=commands.__doc__)
    build = pathlib.Path(__file__).resolve().parents[2] / "build" / "handheld"
    parser.add_argument("--exe", type=pathlib.Path, default=build / "Quorvane.exe")
    parser.add_argument("--dll", type=pathlib.Path, default=build / "SciLexer.dll")
    parser.add_argument("--folder", type=pathlib.Path, help="the device's \\My Documents")
    parser.add_argument("--script", type=pathlib.Path, help="steps, a line each")
    parser.add_argument("--picture", type=pathlib.Path, help="taken when the steps are done")
    parser.add_argument("--log", type=pathlib.Path, help="all calls and messages")
    parser.add_argument("--count", action="store_true", help="instructions of every step")
    parser.add_argument("web", nargs="?", type=pathlib.Path, help="a web to open")
    return parser.parse_args()


def steps_of(arguments):
    """The lines of the script, or what is typed."""
    if arguments.script is not None:
        return arguments.script.read_text(encoding="utf-8").splitlines()
    if arguments.picture is not None:
        return []
    return typed_steps()


def typed_steps():
    while True:
        try:
            yield input("> ")
        except EOFError:
            return


def run(arguments, folder, log):
    """Exit code 1 when a step did not find what it expected, 2 when the program failed."""
    opened = f"\\My Documents\\{arguments.web.name}" if arguments.web is not None else ""
    try:
        device = Device(arguments.exe, arguments.dll, folder, opened, log)
        for step in steps_of(arguments):
            if device.ended is not None:
                break
            do_step(device, step, arguments)
    except Fault as fault:
        print(fault, file=sys.stderr)
        return 2
    if arguments.picture is not None:
        device.picture(arguments.picture)
    device.close()
    return device.ended or 0


def do_step(device, step, arguments):
    try:
        device.do(step)
    except Unexpected as error:
        if arguments.script is not None:
            print(error, file=sys.stderr)
            raise SystemExit(1) from None
        print(error)
    for text in device.said:
        print(text)
    device.said.clear()
    if arguments.count and step.strip():
        print(f"{device.step_instructions:>12,} {step}")


def main():
    arguments = read_arguments()
    log = arguments.log.open("w", encoding="utf-8") if arguments.log is not None else None
    folder = arguments.folder or arguments.web and arguments.web.resolve().parent
    if folder:
        return run(arguments, folder, log)
    with tempfile.TemporaryDirectory() as folder:
        return run(arguments, pathlib.Path(folder), log)


if __name__ == "__main__":
    sys.exit(main())
