"""Memory, threads, open files and processor time of a process."""

import collections
import os
import pathlib
import statistics

from .common import Failure, now

Sample = collections.namedtuple('Sample', 'time memory threads files')  # seconds since the start, KiB


class Measures:
    def __init__(self, process):
        self.process = pathlib.Path(f'/proc/{process}')
        self.samples = []
        self.started = now()
        self.used = 0

    def start(self):
        """What was before does not count."""
        self.samples.clear()
        self.started = now()
        self.used = self.processor()

    def take(self):
        try:
            status = dict(line.split(':', 1) for line in (self.process / 'status').read_text().splitlines())
            files = len(list((self.process / 'fd').iterdir()))
        except OSError as error:
            raise Failure(f'boxsim cannot be measured: {error}') from error
        memory = int(status['VmRSS'].split()[0])
        self.samples.append(Sample(now() - self.started, memory, int(status['Threads']), files))
        return self.samples[-1]

    def processor(self):
        """Seconds of it since the start."""
        fields = (self.process / 'stat').read_text().rpartition(')')[2].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf('SC_CLK_TCK') - self.used

    def memory(self, begin, until):
        """The median between two times."""
        sizes = [sample.memory for sample in self.samples if begin <= sample.time <= until]
        return round(statistics.median(sizes)) if sizes else 0

    def most_threads(self):
        return most([sample.threads for sample in self.samples])

    def most_files(self):
        return most([sample.files for sample in self.samples])


def most(counts):
    """Of two in a row the lesser counts: the system lists a thread for a moment after it has ended."""
    return max(map(min, counts, counts[1:] or counts), default=0)
