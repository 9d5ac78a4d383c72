"""Modbus devices, whatever they hang on."""

import random

from .devices import Device
from .values import MIXED_TYPES, REGISTERS, TYPES, number_of, words_of

EXCEPTION = 0x80  # of the function in an answer
ILLEGAL_ADDRESS = 2


class Request:
    """A request for registers or coils, and the way back for its answer."""

    def __init__(self, station, function, first, count):
        self.station = station
        self.function = function
        self.first = first
        self.count = count

    def answer_from(self, slaves):
        for slave in slaves:
            if slave.station == self.station:
                slave.answer(self)

    def frame(self, station, pdu, is_damaged):
        raise NotImplementedError

    def send(self, data):
        raise NotImplementedError

    def send_late(self, data):
        """After the time-out."""
        raise NotImplementedError


class Slave(Device):
    FAULTS = ('mute', 'late', 'exception', 'refusal', 'half', 'stranger', 'damaged', 'noise')
    ORDERS = ('ABCD', 'BADC', 'CDAB', 'DCBA')

    def __init__(self, number, name, host, station):
        super().__init__(number, name, host)
        self.station = station
        self.order = self.ORDERS[number % 4]
        self.random = random.Random(number)
        self.exception = 0
        self.refused = 0  # the point

    async def spoil(self, fault):
        self.exception = self.random.choice((1, 2, 3, 4, 6, 10, 11))
        self.refused = self.random.randrange(len(REGISTERS))
        await super().spoil(fault)

    def group(self):
        points = []
        for point, (function, register, kind) in enumerate(REGISTERS):
            points.append({'name': f'{self.name}.{point}', 'dataType': kind, 'permissions': 'r',
                           'addr': f'3{register + 1:04}' if function == 4 else str(register),
                           'length': '12' if kind == 'string' else '1'})
        return {'series': 'standard', 'stationNum': str(self.station), 'byteOrder': self.order, 'startAddress0': '1',
                'charReversed': '0', 'datas': points}

    def text(self, point, count):
        _, value = TYPES[REGISTERS[point][2]]
        return str(value(number_of(self.number, point, count)))

    def may_follow(self, point, count, before):
        # Each answer has a new one. Mixed values come again by chance.
        return REGISTERS[point][2] in MIXED_TYPES or count > before

    def answer(self, request):
        if self.fault == 'mute':
            return
        if self.fault == 'noise':
            request.send(self.random.randbytes(self.random.randrange(1, 40)))
            return
        self.count += 1
        station = self.station + 1 if self.fault == 'stranger' else self.station
        frame = request.frame(station, self.pdu(request), self.fault == 'damaged')
        if self.fault == 'late':
            request.send_late(frame)
        elif self.fault == 'half':
            request.send(frame[:len(frame) // 2])
        else:
            request.send(frame)

    def pdu(self, request):
        """What it says to the request; data that is to be taken is noted."""
        if self.fault == 'exception':
            return bytes([request.function | EXCEPTION, self.exception])
        words = self.words(request.function)
        wanted = [words.get(register) for register in range(request.first, request.first + request.count)]
        if None in wanted:
            return bytes([request.function | EXCEPTION, ILLEGAL_ADDRESS])
        if self.fault in (None, 'refusal'):
            self.say()
        if request.function == 1:
            bits = sum((word[1] & 1) << i for i, word in enumerate(wanted))
            data = bits.to_bytes((request.count + 7) // 8, 'little')
        else:
            data = b''.join(wanted)
        return bytes([request.function, len(data)]) + data

    def words(self, function):
        """Of each register that the function reads."""
        words = {}
        for point, (area, first, kind) in enumerate(REGISTERS):
            if area == function and not (self.fault == 'refusal' and point == self.refused):
                number = number_of(self.number, point, self.count)
                for i, word in enumerate(words_of(kind, number, self.order)):
                    words[first + i] = word
        return words
