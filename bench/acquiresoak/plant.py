"""All devices and what they hang on, and the project that describes them."""

from .common import INTERVAL
from .meters import Meter, MeterLine
from .modbus import Slave
from .rtu import SlaveLine
from .tcp import Server

LONGEST_PAUSE = 10  # seconds between two tries of what is lost
SLACK = 5           # for what a busy machine adds to that


class Plant:
    def __init__(self, network, folder):
        self.standards = []
        self.devices = []
        self.servers = [Server(f'server{i}', f'{network}.{100 + i}') for i in range(1, 18)]
        self.meter_line = MeterLine('COM1', folder)
        line, shared_line = SlaveLine('COM2', folder), SlaveLine('COM3', folder)
        self.lines = [self.meter_line, line, shared_line]

        self.add('Meters', [Meter(i, f'meter{i}', self.meter_line, 1 if i <= 2 else 2) for i in range(1, 5)])
        *single, gateway = self.servers
        for i, server in enumerate(single, 1):
            self.add(f'Tcp{i}', [Slave(10 + i, f'tcp{i}', server, 1)])
        self.add('Gateway', [Slave(30 + i, f'behind{i}', gateway, i) for i in range(1, 5)])
        self.add('Line', [Slave(40 + i, f'line{i}', line, i) for i in range(1, 5)])
        self.add('TurnA', [Slave(50 + i, f'turn{i}', shared_line, i) for i in (1, 2)])
        self.add('TurnB', [Slave(50 + i, f'turn{i}', shared_line, i) for i in (3, 4)])

    def add(self, name, devices):
        """A Standard with these devices, which hang on the same."""
        self.devices += devices
        self.standards.append({'name': name, **devices[0].host.standard(),
                               'datas': [device.group() for device in devices]})

    def project(self):
        return {'name': 'Soak', 'description': '', 'standards': self.standards, 'services': [], 'boxs': []}

    def hosts(self):
        return [*self.servers, *self.lines]

    def things(self):
        return [*self.hosts(), *self.devices]

    async def open(self):
        for host in self.hosts():
            await host.open()

    @staticmethod
    def time_to_come_back(device):
        """Seconds after which one that is sound has to be valid: its longest pause, and its turn among the others."""
        return LONGEST_PAUSE + len(device.host.devices) * INTERVAL + SLACK
