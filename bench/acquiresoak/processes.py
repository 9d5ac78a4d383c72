"""The processes that the soak starts."""

import asyncio
import signal

running = []


async def start(*arguments, **streams):
    """Without the terminal's Ctrl+C, which is for the soak alone."""
    streams = {'stdin': asyncio.subprocess.DEVNULL, 'stdout': asyncio.subprocess.DEVNULL, **streams}
    process = await asyncio.create_subprocess_exec(*map(str, arguments), start_new_session=True, **streams)
    running.append(process)
    return process


async def end(process, how=signal.SIGTERM):
    if process.returncode is None:
        process.send_signal(how)
        try:
            await asyncio.wait_for(process.wait(), 5)
        except asyncio.TimeoutError:
            process.kill()
            await process.wait()
    if process in running:
        running.remove(process)


async def end_all():
    while running:  # the last one first: it may need those before it
        await end(running[-1])
