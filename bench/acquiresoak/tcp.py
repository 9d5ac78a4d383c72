"""Modbus TCP."""

import asyncio
import random
import struct

from .common import INTERVAL, LATENCY, TIMEOUT, milliseconds
from .devices import Host
from .modbus import Request

PORT = 1502

delays = random.Random(1)


class TcpRequest(Request):
    SIZE = 12

    def __init__(self, data, writer):
        self.transaction, _, _, station, function, first, count = struct.unpack('>HHHBBHH', data)
        super().__init__(station, function, first, count)
        self.writer = writer

    def frame(self, station, pdu, is_damaged):
        transaction = self.transaction ^ 0x100 if is_damaged else self.transaction
        return struct.pack('>HHHB', transaction, 0, len(pdu) + 1, station) + pdu

    def send(self, data):
        if not self.writer.is_closing():
            self.writer.write(data)

    def send_late(self, data):
        wait = TIMEOUT + delays.uniform(0.3, 1.5)
        asyncio.get_running_loop().call_later(wait, self.send, data)


class Server(Host):
    """A device, or a gateway with devices behind it."""

    FAULTS = ('gone', 'gone', 'deaf', 'cut')  # the first is twice as likely

    def __init__(self, name, address):
        super().__init__(name)
        self.address = address
        self.server = None
        self.writers = set()

    def standard(self):
        return {'protocol': 'Modbus', 'modbus': 'ModbusTCP', 'parameter': {
            'ip': self.address, 'port': str(PORT), 'keepAlive': '60000', 'connectionTimeout': milliseconds(TIMEOUT),
            'collectionInterval': milliseconds(INTERVAL), 'communicationTimeout': milliseconds(TIMEOUT)}}

    def max_age(self):
        return LATENCY + 2 * TIMEOUT

    async def open(self):
        self.server = await asyncio.start_server(self.serve, self.address, PORT)

    def close(self):
        self.server.close()
        for writer in self.writers:
            writer.transport.abort()

    async def spoil(self, fault):
        await super().spoil(fault)
        if fault == 'gone':
            self.close()

    async def mend(self):
        if self.fault == 'gone':
            await self.open()
        await super().mend()

    async def serve(self, reader, writer):
        self.writers.add(writer)
        try:
            while True:
                data = await reader.readexactly(TcpRequest.SIZE)
                if self.fault == 'cut':
                    break
                if self.fault is None:
                    TcpRequest(data, writer).answer_from(self.devices)
        except (asyncio.IncompleteReadError, ConnectionError):
            pass
        finally:
            self.writers.discard(writer)
            writer.close()
