"""Beats of marked recordings, as `delineation_report --training` writes them, and the samples that training takes.

Times are ms; signals microvolts, 12 leads by time. A "target" is where the cardiologists see a boundary: of a
lead the median over the beats that are averaged, of all leads together the outermost lead but one.
"""

import os

import numpy as np

LEADS = 12
BOUNDARIES = ("P on", "P off", "QRS on", "QRS off", "T on", "T off")
ONSETS = (0, 2, 4)
RATE = 500  # samples a second in the files
BLOCK = 600  # samples of a beat,
ALIGNMENT_MS = 450  # which stands so long behind its start
SAME_BEAT_MS = 120  # a mark belongs to the beat that is this near
OUTERMOST_MS = 20  # a lead's mark counts as no further out than so long outside the outermost but one
OTHER_LEAD = 12  # stands for a lead without a name of its own


class Record:
    """The recording of a number, with its beats and their marks."""

    def __init__(self, folder, number):
        self.number = number
        marks = []
        self.beats, self.kept, self.dominant = [], [], []
        with open(os.path.join(folder, f"{number}.txt"), encoding="ascii") as file:
            for words in map(str.split, file):
                if words[0] == "rr":
                    self.rr = int(words[1])
                elif words[0] == "centre":
                    self.centre = int(words[1])
                elif words[0] == "beat":
                    self.beats.append(int(words[1]))
                    self.kept.append(words[2] == "1")
                    self.dominant.append(words[3] == "1")
                else:
                    marks.append([float("nan") if word == "-" else float(word) for word in words[1:]])
        samples = np.fromfile(os.path.join(folder, f"{number}.i16"), dtype="<i2")
        self.signal = samples.astype(np.float32).reshape(LEADS, -1)
        self._take_marks(np.array(marks))

    def _take_marks(self, marks):
        """Of every beat and lead the six boundaries from the beat's place, and whether the beat is marked at all."""
        self.marks = np.full((len(self.beats), LEADS, 6), np.nan)
        self.marked = np.zeros((len(self.beats), LEADS), bool)
        for beat, place in enumerate(self.beats):
            for lead in range(LEADS):
                own = marks[(marks[:, 0] == lead) & (np.abs(marks[:, 1] - place) <= SAME_BEAT_MS)]
                if len(own):
                    nearest = own[np.argmin(np.abs(own[:, 1] - place))]
                    self.marks[beat, lead] = nearest[2:8] - place
                    self.marked[beat, lead] = True

    def median_beat(self, chosen):
        """The median over the chosen beats of each sample, the recording's ends continued."""
        offsets = np.arange(BLOCK) - ALIGNMENT_MS * RATE // 1000
        last = self.signal.shape[1] - 1
        blocks = [self.signal[:, np.clip(self.beats[i] * RATE // 1000 + offsets, 0, last)] for i in chosen]
        return np.median(np.stack(blocks), axis=0)

    def targets(self, chosen):
        """Of the chosen beats: the leads' boundaries and those of all leads, ms from the beat, NaN where there is none."""
        leads = np.full((LEADS, 6), np.nan)
        for lead in range(LEADS):
            beats = [i for i in chosen if self.marked[i, lead]]
            for boundary in range(6):
                own = self.marks[beats, lead, boundary] if beats else np.array([])
                own = own[~np.isnan(own)]
                if len(own) and 2 * len(own) >= len(beats):
                    leads[lead, boundary] = np.median(own)
        return leads, np.array([outermost_but_one(leads[:, b], b) for b in range(6)])

    def has_p_wave(self, chosen):
        """1 or 0; NaN where some beats show one and some do not, or none is marked."""
        beats = list(chosen)
        if not np.isnan(self.targets(beats)[1][0]):
            return 1.0
        unmarked = not self.marked[beats].any() or not np.isnan(self.marks[beats][:, :, 0]).all()
        return float("nan") if unmarked else 0.0


def read_records(folder):
    numbers = sorted(int(name[:-4]) for name in os.listdir(folder) if name.endswith(".txt"))
    return [Record(folder, number) for number in numbers]


def outermost_but_one(values, boundary):
    values = np.sort(values[~np.isnan(values)])
    if boundary not in ONSETS:
        values = values[::-1]
    return np.nan if len(values) == 0 else values[min(1, len(values) - 1)]


def within_reach(leads):
    """The targets of the leads, none far outside the outermost but one."""
    leads = leads.copy()
    for boundary in range(6):
        limit = outermost_but_one(leads[:, boundary], boundary)
        if boundary in ONSETS:
            leads[:, boundary] = np.maximum(leads[:, boundary], limit - OUTERMOST_MS)
        else:
            leads[:, boundary] = np.minimum(leads[:, boundary], limit + OUTERMOST_MS)
    return leads


def stretch(signal, centre, factor):
    """Slower by the factor, about the sample `centre`."""
    position = centre + (np.arange(BLOCK) - centre) / factor
    before = np.clip(np.floor(position).astype(int), 0, BLOCK - 2)
    part = np.clip(position - before, 0, 1).astype(np.float32)
    return signal[:, before] * (1 - part) + signal[:, before + 1] * part


def disturb(signal, random):
    """What recordings have besides: noise, hum, wander, a faint lead, leads upside down. In place."""
    time = np.arange(BLOCK) / RATE
    height = signal.max(axis=1) - signal.min(axis=1) + 1

    def add(curves, per_lead):
        signal[:] += curves * (height * per_lead)[:, None]

    if random.random() < 0.5:
        signal *= random.choice([-1, 1], (LEADS, 1))
    if random.random() < 0.4:
        add(random.standard_normal(signal.shape), random.uniform(0.002, 0.02) * random.uniform(0, 1, LEADS))
    if random.random() < 0.15:
        hum = np.sin(2 * np.pi * 50 * time + random.uniform(0, 2 * np.pi))
        add(hum, random.uniform(0, 0.02) * random.uniform(0, 1, LEADS))
    if random.random() < 0.4:
        wander = np.sin(2 * np.pi * random.uniform(0.17, 0.83) * time + random.uniform(0, 2 * np.pi))
        add(wander, random.uniform(0, 0.1, LEADS))
    if random.random() < 0.3:
        faint = random.integers(LEADS)
        signal[faint] = signal[faint] * 0.05 + random.standard_normal(BLOCK) * height[faint] * 0.02


class Sample:
    """A beat for training, ms from the centre of its complex, which lies at `centre` ms of the signal."""

    def __init__(self, record, random, leads):
        chosen, marked_by = self._choose(record, random)
        signal = record.median_beat(chosen)
        targets, all_leads = record.targets(marked_by)
        self.p_wave = record.has_p_wave(marked_by)
        self.rr = record.rr
        self.centre = record.centre
        targets = within_reach(targets) + ALIGNMENT_MS - record.centre
        all_leads = all_leads + ALIGNMENT_MS - record.centre
        if random.random() < 0.7:
            factor = random.uniform(0.9, 1.12)
            signal = stretch(signal, record.centre / 2, factor)
            targets, all_leads, self.rr = targets * factor, all_leads * factor, self.rr * factor
        disturb(signal, random)
        if random.random() < 0.1:
            self.rr = 0
        shift = int(random.integers(-24, 25))
        first = self.centre - 300 if random.random() < 0.1 else 0
        end = self.centre + 530 if first else 2 * BLOCK
        self.signal, self.first, self.end = signal[leads], first, end
        self.centre += shift
        self.leads, self.all_leads = targets[leads] - shift, all_leads - shift
        names = [OTHER_LEAD] * len(leads) if random.random() < 0.1 else leads
        self.names = np.array(names)

    @staticmethod
    def _choose(record, random):
        """The record's own median beat, or the median of 1, 2, 3 or 5 beats with the marks of those."""
        every = range(len(record.beats))
        good = [i for i in every if record.dominant[i] and record.marked[i].any()]
        if not good or random.random() < 0.4:
            return [i for i in every if record.kept[i]], every
        count = min(len(good), int(random.choice([1, 2, 3, 5])))
        chosen = [int(i) for i in random.choice(good, count, replace=False)]
        return chosen, chosen
