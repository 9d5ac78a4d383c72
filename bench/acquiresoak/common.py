"""The clock, the times that devices and checks have in common, in seconds, and the error that ends the soak."""

import time

INTERVAL = 1.0      # between two readings
TIMEOUT = 0.5       # of a Modbus request
METER_TIMEOUT = 0.6
LATENCY = 3         # from an answer to here, on a busy machine

now = time.monotonic


class Failure(Exception):
    """The soak cannot go on."""


def milliseconds(seconds):
    """As the project has them."""
    return str(round(1000 * seconds))
