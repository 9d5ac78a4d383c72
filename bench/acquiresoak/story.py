"""What happens, in a file with times."""

import sys
import time

MOST_SHOWN = 20


class Story:
    def __init__(self, path):
        self.file = open(path, 'w', encoding='utf-8')
        self.shown = 0

    def tell(self, text):
        self.add(time.strftime('%Y-%m-%d %H:%M:%S') + f' -- {text}\n')

    def add(self, line):
        """One with a time of its own."""
        self.file.write(line)
        self.file.flush()

    def complain(self, text):
        """The first ones are shown at once."""
        self.tell(text)
        if self.shown < MOST_SHOWN:
            self.shown += 1
            print(text, file=sys.stderr, flush=True)

    def close(self):
        self.file.close()
