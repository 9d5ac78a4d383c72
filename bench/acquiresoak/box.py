"""The Box, and those that talk to it."""

import asyncio
import json
import pathlib
import shutil

from .common import Failure
from .processes import end, start

METERSIM = pathlib.Path(__file__).resolve().parents[2] / 'tools/metersim/metersim'


class Box:
    def __init__(self, options, folder, story):
        self.folder = folder
        self.story = story
        self.address = f'{options.network}.1'
        for program in (options.boxsim, options.boxctl, METERSIM):
            shutil.copy(program, folder)  # so that they may be built anew meanwhile
        self.process = None
        self.pushes = self.visits = 0
        self.lines = self.violations = 0  # in the log

    async def start(self, lines):
        serial = [word for line in lines for word in ('--serial', f'{line.name}={line.path}')]
        self.process = await start(self.folder / 'boxsim', '--address', self.address, '--no-discovery', '--acquire',
                                   *serial, stdout=asyncio.subprocess.PIPE)
        line = await asyncio.wait_for(self.process.stdout.readline(), 10)
        if not line.startswith(b'listening on'):
            raise Failure('boxsim does not start')

    async def follow_log(self):
        """What the Box tells of itself, until it ends. The lines of frames are left out."""
        async for line in self.process.stdout:
            text = line.decode(errors='replace')
            if ' !! ' in text:
                self.violations += 1
            elif ' box -- ' in text:
                self.lines += 1
            else:
                continue
            self.story.add(text)
        raise Failure(f'boxsim has ended with {await self.process.wait()}')

    async def follow_reports(self, take):
        """Until the watch ends."""
        watch = await start(self.folder / 'boxctl', 'watch', '--json', self.address, stdout=asyncio.subprocess.PIPE)
        async for line in watch.stdout:
            answer = json.loads(line)
            if not answer['ok']:
                raise Failure(f'the watch has lost the Box: {answer["error"]}')
            take(answer['report'])
        raise Failure(f'the watch has ended with {await watch.wait()}')

    async def push(self, project):
        # By force, since the forms know two serial lines only.
        push = await start(self.folder / 'boxctl', 'push', '--force', project, self.address,
                           stderr=asyncio.subprocess.PIPE)
        told = (await push.stderr.read()).decode()
        await push.wait()
        await end(push)
        if push.returncode != 0:
            raise Failure(f'a push failed: {told}')
        self.pushes += 1
        self.story.tell('pushed')

    async def visit(self, seconds, how_to_end):
        """One more session."""
        visitor = await start(self.folder / 'boxctl', 'watch', self.address)
        self.visits += 1
        await asyncio.sleep(seconds)
        await end(visitor, how_to_end)
