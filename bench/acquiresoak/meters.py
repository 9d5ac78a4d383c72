"""DL/T 645 meters by metersim."""

import asyncio

from .common import LATENCY, METER_TIMEOUT, Failure, now
from .devices import Device
from .lines import Line
from .processes import end, start
from .values import ENERGY, FORMATS, ITEMS, number_of


class Meter(Device):
    """One of those that metersim has on a line."""

    FAULTS = ('absent',)

    def __init__(self, number, name, host, edition):
        super().__init__(number, name, host)
        self.edition = edition
        self.address = f'{number:03}' * 4

    async def spoil(self, fault):
        await super().spoil(fault)
        await self.host.restart()

    async def mend(self):
        await super().mend()
        await self.host.restart()
        self.since = now()  # metersim took a moment

    def group(self):
        points = [{'select': 'true', 'name': f'{self.name}.{point}', 'addr': item, 'dataType': layout}
                  for point, (item, layout, _) in enumerate(ITEMS[self.edition])]
        return {'slaveAddress': self.address, 'protocolVersion': self.edition, 'datas': points}

    def text(self, point, count):
        _, layout, sign = ITEMS[self.edition][point]
        return sign + FORMATS[layout](number_of(self.number, point, count))

    def may_follow(self, point, count, before):
        # It says a value until it gets the next one. Mixed values come again by chance.
        return ITEMS[self.edition][point][1] != ENERGY or count >= before

    def next_values(self):
        """For metersim."""
        self.count += 1
        return [f'{self.address}:{item}={self.text(point, self.count)}'
                for point, (item, _, _) in enumerate(ITEMS[self.edition])]


class MeterLine(Line):
    HARMLESS = (None, 'noise', 'split')  # the meters say what they should
    FAULTS = ('pulled', 'silence', f'late={round(1500 * METER_TIMEOUT)}', 'half', 'noise', 'split', 'checksum',
              'station', 'item', 'short', 'digits', 'error')

    def __init__(self, name, folder):
        super().__init__(name, folder)
        self.metersim = None
        self.lock = asyncio.Lock()

    def standard(self):
        return {'protocol': 'DLT645', 'parameter': self.parameter('9600', '0', METER_TIMEOUT)}

    def max_age(self):
        return 1 + LATENCY + 2 * METER_TIMEOUT * len(self.devices)

    async def open(self):
        await super().open()
        await self.restart()

    async def spoil(self, fault):
        await super().spoil(fault)
        await self.restart()

    async def mend(self):
        await super().mend()
        await self.restart()
        self.since = now()  # metersim took a moment

    def present(self):
        return [meter for meter in self.devices if meter.fault is None]

    def next_values(self):
        """Those of a line that fails in a harmful way must not be taken, so they do not count as said."""
        values = []
        for meter in self.present():
            values += meter.next_values()
            if self.fault in self.HARMLESS:
                meter.say()
        return values

    async def restart(self):
        """With the meters that are present, and the fault of the line."""
        async with self.lock:
            if self.metersim:
                await end(self.metersim)
                self.metersim = None
            if self.fault == 'pulled':
                return
            arguments = ['--quiet', '--line', self.end]
            for meter in self.present():
                arguments += ['--address', meter.address]
            for value in self.next_values():
                arguments += ['--set', value]
            if self.fault:
                arguments += ['--fault', self.fault]
            self.metersim = await start(self.path.with_name('metersim'), *arguments, stdin=asyncio.subprocess.PIPE,
                                        stderr=asyncio.subprocess.DEVNULL)

    async def keep_changing(self):
        while True:
            await asyncio.sleep(1)
            async with self.lock:
                if self.metersim and self.fault != 'pulled':
                    if self.metersim.returncode is not None:
                        raise Failure('metersim has ended')
                    for value in self.next_values():
                        self.metersim.stdin.write(f'set {value}\n'.encode())
