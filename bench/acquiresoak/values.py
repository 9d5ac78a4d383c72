"""The points of each device, and what they say: a value tells its device, its point and a count."""

import struct


def number_of(device, point, count):
    """31 bits."""
    return device << 24 | point << 16 | count & 0xffff


def mixed(number):
    """16 bits, for types and formats that cannot hold the number."""
    return (number * 2654435761 & 0xffffffff) >> 16


# Of each type of a Modbus point the format for struct and the value of a number.
TYPES = {
    'uint32': ('>I', lambda number: number),
    'int32': ('>i', lambda number: -number),
    'uint64': ('>Q', lambda number: number << 32 | number),
    'double': ('>d', lambda number: number + 0.5),
    'uint16': ('>H', mixed),
    'int16': ('>h', lambda number: mixed(number) - 0x8000),
    'float': ('>f', lambda number: mixed(number) + 0.5),
    'string': ('12s', lambda number: f'v {number:x}'),
    'bool': ('>H', lambda number: mixed(number) & 1),
}
MIXED_TYPES = ('uint16', 'int16', 'float', 'bool')

# Of each slave function, first register, type.
REGISTERS = ((3, 0, 'uint32'), (3, 2, 'int32'), (3, 4, 'uint16'), (3, 5, 'int16'), (3, 6, 'double'), (3, 10, 'string'),
             (3, 20, 'float'), (3, 30, 'uint64'), (4, 40, 'uint16'), (1, 3, 'bool'))

# Of each format of a meter the text of a number.
ENERGY = 'XXXXXX.XX'
FORMATS = {
    ENERGY: lambda number: f'{number >> 24 & 7}{number >> 16 & 7}{number % 0x10000 / 100:07.2f}',
    'XXX.X': lambda number: f'{mixed(number) % 10000 / 10:.1f}',
    'XXX': lambda number: f'{mixed(number) % 1000}',
    'XX.XXXX': lambda number: f'{mixed(number) / 10000:.4f}',
}

# Of each edition identifier, format and sign.
ITEMS = {
    1: (('00010000', ENERGY, ''), ('00010100', ENERGY, ''), ('00010200', ENERGY, ''),
        ('00000100', ENERGY, '-'), ('02010100', 'XXX.X', '')),
    2: (('9010', ENERGY, ''), ('9011', ENERGY, ''), ('9020', ENERGY, ''),
        ('B611', 'XXX', ''), ('B630', 'XX.XXXX', '')),
}


def words_of(kind, number, order):
    """The registers of a value, two bytes each."""
    code, value = TYPES[kind]
    if kind == 'string':
        data = struct.pack(code, value(number).encode())
    else:
        data = struct.pack(code, value(number))
    words = [data[i:i + 2] for i in range(0, len(data), 2)]
    if kind != 'string' and len(words) > 1:
        if order in ('DCBA', 'CDAB'):
            words.reverse()
        if order in ('DCBA', 'BADC'):
            words = [word[::-1] for word in words]
    return words
