"""Modbus on a serial line."""

import asyncio
import os
import random
import struct

from .common import LATENCY, TIMEOUT, now
from .lines import Line
from .modbus import Request


def crc_of(data):
    crc = 0xffff
    for byte in data:
        crc ^= byte
        for _ in range(8):
            crc = crc >> 1 ^ 0xa001 if crc & 1 else crc >> 1
    return crc.to_bytes(2, 'little')


class RtuRequest(Request):
    SIZE = 8

    def __init__(self, data, line):
        super().__init__(*struct.unpack('>BBHH', data[:-2]))
        self.line = line
        self.received = now()

    def frame(self, station, pdu, is_damaged):
        data = bytes([station]) + pdu
        crc = crc_of(data)
        if is_damaged:
            crc = bytes([crc[0] ^ 1, crc[1]])
        return data + crc

    def send(self, data):
        self.line.write(data)

    def send_late(self, data):
        asyncio.get_running_loop().call_later(1.4 * TIMEOUT, self.send_while_silent, data)

    def send_while_silent(self, data):
        """The line has to be silent for a while after a time-out. Later, nobody could tell the data from an answer to
        the next request."""
        if now() < self.received + 1.7 * TIMEOUT:
            self.send(data)


class SlaveLine(Line):
    FAULTS = ('pulled', 'noise')

    def __init__(self, name, folder):
        super().__init__(name, folder)
        self.received = b''
        self.random = random.Random(name)

    def standard(self):
        return {'protocol': 'Modbus', 'modbus': 'ModbusRTU', 'parameter': self.parameter('115200', '-1', TIMEOUT)}

    def max_age(self):
        return LATENCY + 2 * TIMEOUT * len(self.devices)

    async def plug(self):
        await super().plug()
        self.received = b''
        asyncio.get_running_loop().add_reader(self.files[1], self.receive, self.files[1])

    async def pull(self):
        asyncio.get_running_loop().remove_reader(self.files[1])
        await super().pull()

    async def spoil(self, fault):
        await super().spoil(fault)
        self.make_noise()

    def make_noise(self):
        """As long as the line is to be noisy."""
        if self.fault == 'noise':
            self.write(self.random.randbytes(self.random.randrange(1, 30)))
            asyncio.get_running_loop().call_later(self.random.uniform(0.02, 0.6), self.make_noise)

    def write(self, data):
        if self.fault == 'pulled':
            return
        try:
            os.write(self.files[1], data)
        except OSError:
            pass  # nobody reads

    def receive(self, file):
        try:
            self.received += os.read(file, 4096)
        except OSError:
            asyncio.get_running_loop().remove_reader(file)
        while len(self.received) >= RtuRequest.SIZE:
            data = self.received[:RtuRequest.SIZE]
            if crc_of(data[:-2]) == data[-2:]:
                self.received = self.received[RtuRequest.SIZE:]
                RtuRequest(data, self).answer_from(self.devices)
            else:
                self.received = self.received[1:]
