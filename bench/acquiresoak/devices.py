"""What comes and goes: devices, and the servers and lines that they hang on."""

import collections

from .common import now


class Thing:
    """fault is what it fails with; None while it is sound, which it is since a time."""

    FAULTS = ()

    def __init__(self, name):
        self.name = name
        self.fault = None
        self.since = now()

    async def spoil(self, fault):
        self.fault = fault

    async def mend(self):
        self.fault = None
        self.since = now()


class Host(Thing):
    """What devices hang on."""

    def __init__(self, name):
        super().__init__(name)
        self.devices = []

    async def open(self):
        raise NotImplementedError

    def standard(self):
        """What the project says of it: protocol and parameters."""
        raise NotImplementedError

    def max_age(self):
        """Seconds from the answer of a device to the report of its value, at most: a reading waits twice for each
        device that is silent."""
        raise NotImplementedError


class Device(Thing):
    """One that the Box reads. What it says as it should is noted by its count."""

    def __init__(self, number, name, host):
        super().__init__(name)
        self.number = number
        self.host = host
        host.devices.append(self)
        self.count = 0
        self.told = collections.deque(maxlen=300)  # time and count

    def group(self):
        """What the project says of it."""
        raise NotImplementedError

    def text(self, point, count):
        """The value of a point as the Box reports it."""
        raise NotImplementedError

    def may_follow(self, point, count, before):
        """Whether a value may be that of this count where the one before was of another."""
        raise NotImplementedError

    def say(self):
        self.told.append((now(), self.count))

    def count_of(self, point, text, max_age):
        """That with which it said the text last; None if it did not within so many seconds."""
        oldest = now() - max_age
        for when, count in reversed(self.told):
            if when < oldest:
                break
            if self.text(point, count) == text:
                return count
        return None

    def sound_since(self):
        """None if it fails, or what it hangs on."""
        if self.fault or self.host.fault:
            return None
        return max(self.since, self.host.since)
