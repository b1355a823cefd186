"""The clock of a device that reports at a rate."""

import select
import time

from witnesses import Failed


def await_turn(moment: float, source, name: str) -> None:
    """Until the moment at which the device is to report next. Whoever it reports to says nothing by
    itself: when something comes from there, the device has been lost."""
    left = moment - time.monotonic()
    if left > 0 and select.select([source], [], [], left)[0]:
        raise Failed(f"the {name} is lost")
