"""Serial lines."""

import asyncio
import os

from .common import INTERVAL, Failure, milliseconds, now
from .devices import Host
from .processes import end, start


class Line(Host):
    """A serial line by socat. Both ends stay open here, since socat ends with the first one that is closed."""

    FAULTS = ('pulled',)

    def __init__(self, name, folder):
        super().__init__(name)
        self.path = folder / name              # the Box's end
        self.end = folder / f'{name}-device'
        self.socat = None
        self.files = []

    def parameter(self, baud_rate, gap, timeout):
        """What the project says of the line."""
        return {'serialport': self.name, 'baudRate': baud_rate, 'dataBit': '8', 'stopBit': '1', 'parityBit': 'NONE',
                'rtsEnable': '0', 'communicationGap': gap,
                'collectionInterval': milliseconds(INTERVAL), 'communicationTimeout': milliseconds(timeout)}

    async def open(self):
        await self.plug()

    async def plug(self):
        new = self.path.with_suffix('.new')
        self.socat = await start('socat', f'pty,rawer,link={new}', f'pty,rawer,link={self.end}')
        deadline = now() + 10
        while not (new.exists() and self.end.exists()):
            if now() > deadline:
                raise Failure(f'socat makes no line {self.name}')
            await asyncio.sleep(0.02)
        self.files = [os.open(path, os.O_RDWR | os.O_NOCTTY | os.O_NONBLOCK) for path in (new, self.end)]
        new.rename(self.path)

    async def pull(self):
        # First, since its terminal may soon be one of another line.
        self.path.unlink()
        await end(self.socat)
        for file in self.files:
            os.close(file)

    async def spoil(self, fault):
        await super().spoil(fault)
        if fault == 'pulled':
            await self.pull()

    async def mend(self):
        if self.fault == 'pulled':
            await self.plug()
        await super().mend()
