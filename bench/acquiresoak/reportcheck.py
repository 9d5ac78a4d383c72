"""Whether the Box tells the truth, and in time."""

from .common import now


class ReportCheck:
    """Looks at each report. A valid value has to be one that its device said a short time ago, and a new one where
    that can be told; one that is not valid is the last valid one, or empty."""

    def __init__(self, plant, story):
        self.plant = plant
        self.story = story
        self.points = {f'{device.name}.{i}': (device, i) for device in plant.devices
                       for i in range(len(device.group()['datas']))}
        self.checked = self.false = self.lapses = self.overdue = 0
        self.slowest = 0    # seconds, of those that came back
        self.known = now()  # since when the project runs
        self.good = {device: now() for device in plant.devices}  # when all its values were valid the last time
        self.values = {}    # the last valid one of each point,
        self.counts = {}    # and its count

    def take(self, report):
        valid = {}
        for row in report['datas']:
            device, _ = self.points[row['name']]
            is_valid = row['valid'] == '1'
            valid[device] = valid.get(device, True) and is_valid
            self.checked += 1
            if not (self.is_said(row) if is_valid else self.is_kept(row)):
                self.false += 1
                self.complain_of(row)
        for device, is_valid in valid.items():
            if is_valid:
                self.note_good(device)
            elif self.waited(device) > self.plant.time_to_come_back(device):
                self.lapses += 1
                self.story.tell(f'LAPSE {device.name} is sound, and not valid')

    def is_said(self, row):
        name, value = row['name'], row['value']
        device, point = self.points[name]
        count = device.count_of(point, value, device.host.max_age())
        before = self.counts.get(name, 0)
        self.values[name] = value
        self.counts[name] = count or 0
        return count is not None and device.may_follow(point, count, before)

    def is_kept(self, row):
        return row['value'] in ('', self.values.get(row['name'], ''))

    def complain_of(self, row):
        device, point = self.points[row['name']]
        self.story.complain(f'FALSE {row["name"]} = {row["value"]!r}, valid {row["valid"]}: fault {device.fault}, of '
                            f'{device.host.name} {device.host.fault}; {self.origin(point, row["value"])}')

    def origin(self, point, text):
        for device in self.plant.devices:
            if point < len(device.group()['datas']):
                for when, count in reversed(device.told):
                    if device.text(point, count) == text:
                        return f'{device.name} said it {now() - when:.1f} s ago'
        return 'nobody said it'

    def begin(self, device):
        """Since when the Box could know that it is sound; None if it is not."""
        since = device.sound_since()
        return since and max(since, self.known)

    def waited(self, device):
        begin = self.begin(device)
        return now() - begin if begin else 0

    def note_good(self, device):
        begin = self.begin(device)
        if begin and self.good[device] < begin:
            self.slowest = max(self.slowest, now() - begin)
        self.good[device] = now()

    def look(self):
        """Whether all that are sound are valid."""
        for device in self.plant.devices:
            bound = self.plant.time_to_come_back(device)
            if self.waited(device) > bound and now() - self.good[device] > bound:
                self.overdue += 1
                self.story.complain(f'OVERDUE {device.name}: sound for {self.waited(device):.1f} s')
                self.good[device] = now()

    def not_good_since(self, begin):
        return [device.name for device in self.plant.devices if self.good[device] < begin]
