"""What the soak prints."""

MOST_GROWTH = 2 * 1024  # KiB


def print_minute(soak, seconds):
    sample = soak.measures.samples[-1]
    print(f'{seconds // 60:3} min: {sample.memory} KiB, {sample.threads} threads, {sample.files} files, '
          f'{soak.measures.processor():.1f} s of processor, {soak.box.lines} log lines, '
          f'{soak.moves} comings and goings, {soak.check.checked} values, {soak.check.false} false, '
          f'{soak.check.overdue} overdue', flush=True)


def summarize(soak, seconds):
    """Prints a table, and gives what must not be."""
    measures, box, check = soak.measures, soak.box, soak.check
    early = measures.memory(seconds / 12, seconds / 4)
    late = measures.memory(seconds * 5 / 6, seconds)
    threads, files = measures.most_threads(), measures.most_files()
    most_threads, most_files = soak.bounds()
    used = measures.processor()
    for what, figure in (
            ('Ran for', f'{seconds} s'),
            ('Comings and goings; pushes; other sessions', f'{soak.moves}; {box.pushes}; {box.visits}'),
            ('Values checked, false ones', f'{check.checked}, {check.false}'),
            ('Devices that did not come back in time', f'{check.overdue}'),
            ('The slowest that came back', f'{check.slowest:.1f} s'),
            ('Readings of sound devices that failed', f'{check.lapses}'),
            ('Resident memory, early and at the end', f'{early} KiB, {late} KiB'),
            ('Threads at most, of', f'{threads}, {most_threads}'),
            ('Open files at most, of', f'{files}, {most_files}'),
            ('Processor', f'{used:.1f} s, {100 * used / max(1, seconds):.1f} % of a core'),
            ('Lines in the log', f'{box.lines}')):
        print(f'| {what} | {figure} |')
    return [text for is_wrong, text in (
        (check.false > 0, 'there were false values'),
        (check.overdue > 0, 'devices did not come back in time'),
        (late > early + MOST_GROWTH, 'memory grows'),
        (threads > most_threads, 'there are too many threads'),
        (files > most_files, 'there are too many open files'),
        (box.violations > 0, 'the Box complained of what it was sent')) if is_wrong]
