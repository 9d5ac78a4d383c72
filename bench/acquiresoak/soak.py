"""The run: what fails when, and what goes on beside it."""

import asyncio
import json
import random
import signal

from . import processes, summary
from .box import Box
from .common import Failure, now
from .measures import Measures
from .plant import LONGEST_PAUSE, Plant
from .reportcheck import ReportCheck
from .story import Story

# Seconds, from and to.
SOUND = (5, 150)    # how long something is sound, and how long it then fails
FAILING = (1, 40)
PUSHES = (30, 120)  # between two pushes
VISITS = (1, 20)    # between two more sessions, and how long one lasts
VISITORS = 2


class Soak:
    def __init__(self, options, folder):
        self.options = options
        self.project = folder / 'project.json'
        self.story = Story(folder / 'soak.log')
        self.plant = Plant(options.network, folder)
        self.check = ReportCheck(self.plant, self.story)
        self.box = Box(options, folder, self.story)
        self.measures = None
        self.idle = None  # a sample of the Box without a project
        self.random = random.Random(options.seed)
        self.moves = 0
        self.over = asyncio.Event()
        self.troubles = []
        self.tasks = []

    async def run(self):
        await self.begin()
        for thing in self.plant.things():
            self.run_beside(self.unsettle(thing))
        self.run_beside(self.keep_pushing())
        for _ in range(VISITORS):
            self.run_beside(self.keep_visiting())
        seconds = await self.watch()
        self.troubles += summary.summarize(self, seconds)

    async def begin(self):
        """Until all devices are valid for the first time."""
        self.project.write_text(json.dumps(self.plant.project()))
        await self.plant.open()
        await self.box.start(self.plant.lines)
        self.measures = Measures(self.box.process.pid)
        self.idle = self.measures.take()
        self.run_beside(self.box.follow_log())
        self.run_beside(self.plant.meter_line.keep_changing())
        self.run_beside(self.box.follow_reports(self.check.take))
        await asyncio.sleep(1)
        begin = now()
        await self.push()
        while lost := self.check.not_good_since(begin):
            if now() > begin + 2 * LONGEST_PAUSE or self.over.is_set():
                raise Failure(f'not valid at the start: {", ".join(lost)}')
            await asyncio.sleep(0.2)
        self.measures.start()

    async def watch(self):
        """Looks at everything once a second; gives for how many."""
        seconds = 0
        while seconds < self.options.seconds and not self.over.is_set():
            seconds += 1
            try:
                await asyncio.wait_for(self.over.wait(), max(0, self.measures.started + seconds - now()))
            except asyncio.TimeoutError:
                pass
            self.measures.take()
            self.check.look()
            if seconds % 60 == 0:
                summary.print_minute(self, seconds)
        return seconds

    def bounds(self):
        """The threads and open files that the Box may have: a thread a link, which has a file of its own beside the
        link, and a second one of a line, by which it is claimed; and the sessions: the one that checks, the visitors
        and a push."""
        links, lines = len(self.plant.hosts()), len(self.plant.lines)
        return self.idle.threads + links, self.idle.files + 2 * links + lines + 2 + VISITORS

    async def finish(self):
        for task in self.tasks:
            task.cancel()
        await asyncio.gather(*self.tasks, return_exceptions=True)
        await processes.end_all()
        self.story.close()

    # What goes on beside

    def run_beside(self, work):
        task = asyncio.create_task(work)
        task.add_done_callback(self.note_end)
        self.tasks.append(task)

    def note_end(self, task):
        """One that fails ends the soak."""
        error = None if task.cancelled() else task.exception()
        if error:
            self.troubles.append(str(error) if isinstance(error, Failure) else repr(error))
            self.over.set()

    async def unsettle(self, thing):
        chance = random.Random(f'{self.options.seed} {thing.name}')
        while True:
            await asyncio.sleep(chance.uniform(*SOUND))
            fault = chance.choice(thing.FAULTS)
            self.story.tell(f'{thing.name}: {fault}')
            await thing.spoil(fault)
            await asyncio.sleep(chance.uniform(*FAILING))
            await thing.mend()
            self.story.tell(f'{thing.name}: sound')
            self.moves += 2

    async def push(self):
        await self.box.push(self.project)
        self.check.known = now()

    async def keep_pushing(self):
        while True:
            await asyncio.sleep(self.random.uniform(*PUSHES))
            await self.push()

    async def keep_visiting(self):
        while True:
            await asyncio.sleep(self.random.uniform(*VISITS))
            await self.box.visit(self.random.uniform(*VISITS), self.random.choice((signal.SIGINT, signal.SIGKILL)))
