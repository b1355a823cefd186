"""Runs bench/end_to_end.py on a private desktop, with the build folder as its argument."""

import pathlib
import sys

from desktop import Failed, Interrupted, PrivateDesktop

TREE = pathlib.Path(__file__).resolve().parents[2]


def main() -> int:
    try:
        with PrivateDesktop(environment={"PYTHONPATH": str(TREE / "script/lib")}) as desktop:
            command = [sys.executable, "-B", TREE / "bench/end_to_end.py", TREE / "build/bench"]
            status = desktop.start("end-to-end", command, stdout=None, stderr=None).wait()
            return status if status >= 0 else 128 - status
    except Failed as failure:
        print(f"script/bench: {failure}", file=sys.stderr)
        return 1
    except Interrupted as interruption:
        return interruption.status


if __name__ == "__main__":
    sys.exit(main())
