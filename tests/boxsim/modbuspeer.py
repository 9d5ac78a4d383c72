#!/usr/bin/python3
"""A Modbus device for the tests, by pymodbus: known values of every type, once in each byte order.

    modbuspeer.py tcp ADDRESS PORT
    modbuspeer.py rtu PATH

Station 1 is ABCD, 2 BADC, 3 CDAB, 4 DCBA; the strings of station 2 have the low byte first. Prints "ready" when it
listens. A line "STATION REGISTER VALUE" on standard input sets a holding register, and is answered with "set".
"""

import asyncio
import struct
import sys
import threading

from pymodbus.datastore import ModbusSequentialDataBlock, ModbusServerContext, ModbusSlaveContext
from pymodbus.server.async_io import ModbusSerialServer, ModbusTcpServer
from pymodbus.transaction import ModbusRtuFramer, ModbusSocketFramer

# First register, format of struct, value.
NUMBERS = [
    (0, '>H', 7), (1, '>H', 0), (2, '>H', 0x12f6), (3, '>H', 0x12f6), (4, '>h', -12345), (5, '>H', 54321),
    (6, '>i', -123456789), (8, '>I', 4000000000), (10, '>q', -1234567890123456789),
    (14, '>Q', 18000000000000000000), (18, '>f', 230.1), (20, '>d', -0.1), (24, '>f', float('nan')),
]
STRINGS = [(26, 'Pump 7'.encode()), (31, 'Grün'.encode()), (36, 'Grün'.encode('latin-1'))]
LONG = (100, bytes(ord('a') + i % 26 for i in range(300)))


def words_of(data):
    return [high << 8 | low for high, low in zip(data[::2], data[1::2])]


def swapped(words):
    return [(word & 0xff) << 8 | word >> 8 for word in words]


def registers(order, reversed_strings):
    words = [0] * 400
    for first, code, value in NUMBERS:
        value_words = words_of(struct.pack(code, value))
        if len(value_words) > 1:
            if order in ('BADC', 'DCBA'):
                value_words = swapped(value_words)
            if order in ('CDAB', 'DCBA'):
                value_words.reverse()
        words[first:first + len(value_words)] = value_words
    for first, data in [*STRINGS, LONG]:
        text_words = words_of(data + b'\0' * (len(data) % 2))
        words[first:first + len(text_words)] = swapped(text_words) if reversed_strings else text_words
    return words


def slave(order, reversed_strings=False):
    return ModbusSlaveContext(
        zero_mode=True,
        hr=ModbusSequentialDataBlock(0, registers(order, reversed_strings)),
        ir=ModbusSequentialDataBlock(0, [1000 + i for i in range(20)]),
        co=ModbusSequentialDataBlock(0, [i % 3 == 0 for i in range(40)]),
        di=ModbusSequentialDataBlock(0, [i % 2 == 1 for i in range(40)]))


def take_commands(context):
    for line in sys.stdin:
        station, register, value = (int(word) for word in line.split())
        context[station].setValues(3, register, [value])
        print('set', flush=True)


async def main():
    context = ModbusServerContext(
        slaves={1: slave('ABCD'), 2: slave('BADC', True), 3: slave('CDAB'), 4: slave('DCBA')}, single=False)
    if sys.argv[1] == 'tcp':
        server = ModbusTcpServer(context, ModbusSocketFramer, None, (sys.argv[2], int(sys.argv[3])),
                                 allow_reuse_address=True)
        serving = asyncio.ensure_future(server.serve_forever())
        await server.serving
    else:
        server = ModbusSerialServer(context, ModbusRtuFramer, None, port=sys.argv[2], baudrate=115200,
                                    ignore_missing_slaves=True)
        await server.start()
        serving = asyncio.ensure_future(server.serve_forever())
    threading.Thread(target=take_commands, args=(context,), daemon=True).start()
    print('ready', flush=True)
    await serving

asyncio.run(main())
