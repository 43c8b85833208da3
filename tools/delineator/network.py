"""The network of suite/kxanalyze/network.h, with its input and its output as they are computed there."""

import numpy as np
import torch
from torch import nn
from torch.nn import functional

PLACES, STEP_MS, BEFORE_MS = 272, 4, 440
FINE, MIDDLE, COARSE, GLOBAL = 10, 14, 18, 16
INPUTS, LEAD_POINTS, LEAD_NAMES = 7, 6, 13
OF_ALL = (0, 1, 2, 3, 5)  # which of the six boundaries all leads have together
TIMES = np.arange(PLACES) * STEP_MS - BEFORE_MS


def to_1000(signal):
    """500 samples a second to 1000: a cubic through four samples (Catmull and Rom)."""
    before = np.concatenate([signal[:, :1], signal[:, :-1]], 1)
    behind = np.concatenate([signal[:, 1:], signal[:, -1:]], 1)
    further = np.concatenate([behind[:, 1:], behind[:, -1:]], 1)
    result = np.empty((signal.shape[0], 2 * signal.shape[1]))
    result[:, 0::2] = signal
    result[:, 1::2] = (9 * (signal + behind) - before - further) / 16
    return result


def smooth(level, width):
    half = width // 2
    for _ in range(3):
        padded = np.concatenate([np.repeat(level[:, :1], half + 1, 1), level, np.repeat(level[:, -1:], half, 1)], 1)
        sums = np.cumsum(padded, 1)
        level = (sums[:, width:] - sums[:, :-width]) / width
    return level


def slope(level):
    result = np.zeros_like(level)
    result[:, 1:-1] = (level[:, 2:] - level[:, :-2]) / 2
    return result


def make_input(level, centre, rr):
    """Leads by 1 sample a ms to the rows of suite/kxanalyze/network_input.cpp."""
    fine, wide = smooth(level, 5), smooth(level, 17)
    fine_slope, wide_slope = slope(fine), slope(wide)
    around = slice(max(0, centre - 100), centre + 100)

    def noise(of):
        sizes = np.abs(of)
        return np.quantile(sizes, 0.25, axis=1) + 0.004 * sizes[:, around].max(axis=1)

    height = (fine[:, around].max(axis=1) - fine[:, around].min(axis=1) + 1e-6)[:, None]
    base = np.median(fine, axis=1)[:, None]
    places = centre + TIMES
    inside = (places >= 0) & (places < level.shape[1])
    at = np.clip(places, 0, level.shape[1] - 1)
    rows = np.empty((level.shape[0], INPUTS, PLACES), np.float32)
    rows[:, 0] = np.arcsinh((fine[:, at] - base) / (0.03 * height)) / 2
    rows[:, 1] = np.arcsinh(fine_slope[:, at] / (4 * noise(fine_slope) + 1e-6)[:, None]) / 2
    rows[:, 2] = np.arcsinh(wide_slope[:, at] / (4 * noise(wide_slope) + 1e-6)[:, None]) / 2
    rows[:, 3] = np.arcsinh(wide_slope[:, at] / (0.0015 * height)) / 2
    rows[:, 4] = TIMES / 300
    rows[:, 5] = TIMES / rr if rr else 0
    rows[:, 6] = 1
    return rows * inside


class Network(nn.Module):
    # The layers in the order of the table.
    ORDER = (
        "to_fine", "to_middle", "at_middle", "to_coarse", "lead_name", "join", "step1", "step2", "step4",
        "up_to_middle", "up_to_fine", "lead_out", "global_in", "global_out", "p_wave",
    )  # fmt: skip

    def __init__(self):
        super().__init__()

        def layer(inputs, outputs, taps, stride=1, dilation=1):
            return nn.Conv1d(inputs, outputs, taps, stride, taps // 2 * dilation, dilation)

        self.to_fine = layer(INPUTS, FINE, 7)
        self.to_middle = layer(FINE, MIDDLE, 5, stride=2)
        self.at_middle = layer(MIDDLE, MIDDLE, 5)
        self.to_coarse = layer(MIDDLE, COARSE, 5, stride=2)
        self.lead_name = nn.Embedding(LEAD_NAMES, COARSE)
        nn.init.zeros_(self.lead_name.weight)
        self.join = layer(3 * COARSE, COARSE, 1)
        self.step1 = layer(COARSE, COARSE, 5)
        self.step2 = layer(COARSE, COARSE, 5, dilation=2)
        self.step4 = layer(COARSE, COARSE, 5, dilation=4)
        self.up_to_middle = layer(COARSE + MIDDLE, MIDDLE, 5)
        self.up_to_fine = layer(MIDDLE + FINE, FINE, 5)
        self.lead_out = layer(FINE, LEAD_POINTS, 1)
        self.global_in = layer(2 * FINE, GLOBAL, 5)
        self.global_out = layer(GLOBAL, len(OF_ALL), 1)
        self.p_wave = nn.Linear(2 * GLOBAL, 1)

    def forward(self, rows, names):
        """rows: beats, leads, INPUTS, PLACES; names: beats, leads. Logarithms of the odds of each place, for the
        points of the leads and of all leads, and of there being a P wave."""
        beats, leads = rows.shape[:2]
        fine = functional.relu(self.to_fine(rows.flatten(0, 1)))
        middle = functional.relu(self.at_middle(functional.relu(self.to_middle(fine))))
        coarse = functional.relu(self.to_coarse(middle)) + self.lead_name(names).flatten(0, 1)[:, :, None]
        of_all = pool(coarse, beats, leads)
        of_all = of_all[:, None].expand(-1, leads, -1, -1).flatten(0, 1)
        joined = functional.relu(self.join(torch.cat([coarse, of_all], 1)))
        for step in (self.step1, self.step2, self.step4):
            joined = joined + functional.relu(step(joined))
        middle = functional.relu(self.up_to_middle(torch.cat([twice(joined), middle], 1)))
        top = functional.relu(self.up_to_fine(torch.cat([twice(middle), fine], 1)))
        lead_points = self.lead_out(top).reshape(beats, leads, LEAD_POINTS, PLACES)
        all_rows = functional.relu(self.global_in(pool(top, beats, leads)))
        summary = torch.cat([all_rows.mean(2), all_rows.max(2)[0]], 1)
        return lead_points, self.global_out(all_rows), self.p_wave(summary)[:, 0]


def pool(rows, beats, leads):
    rows = rows.reshape(beats, leads, *rows.shape[1:])
    return torch.cat([rows.mean(1), rows.max(1)[0]], 1)


def twice(rows):
    return functional.interpolate(rows, scale_factor=2, mode="nearest")


def medians(part):
    """Where half of each distribution lies below, ms from the centre."""
    sums = part.cumsum(-1)
    place = (sums < 0.5).sum(-1, keepdim=True).clamp(max=PLACES - 1)
    here, so_far = part.gather(-1, place), sums.gather(-1, place)
    return ((place + (0.5 - (so_far - here)) / here - 0.5) * STEP_MS - BEFORE_MS)[..., 0]


def run(networks, level, centre, rr, names):
    """A beat of 1 sample a ms: the points of all leads, those of the leads, and the odds of a P wave, in the mean of the
    distributions of the networks."""
    rows = torch.from_numpy(make_input(level, centre, rr))[None]
    with torch.no_grad():
        results = [network(rows, torch.as_tensor(names)[None]) for network in networks]
    lead_points, all_points = (sum(torch.softmax(r[i].double(), -1) for r in results) / len(results) for i in (0, 1))
    p_wave = sum(float(result[2][0]) for result in results) / len(results)
    return medians(all_points)[0].numpy(), medians(lead_points)[0].numpy(), p_wave


def to_table(network):
    """The weights as signed bytes with a factor for each output, and the biases."""
    all_bytes, factors, biases = [], [], []
    for name in Network.ORDER:
        module = getattr(network, name)
        flat = module.weight.detach().reshape(module.weight.shape[0], -1).numpy()
        factor = np.maximum(np.abs(flat).max(axis=1) / 127, 1e-9).astype(np.float32)
        all_bytes.append(np.clip(np.rint(flat / factor[:, None]), -127, 127).astype(np.int8).ravel())
        factors.append(factor)
        bias = getattr(module, "bias", None)
        biases.append(np.zeros(len(factor), np.float32) if bias is None else bias.detach().numpy())
    return np.concatenate(all_bytes), np.concatenate(factors), np.concatenate(biases)


def from_table(all_bytes, factors, biases):
    """The network of a table."""
    network = Network()
    first_byte = first_output = 0
    for name in Network.ORDER:
        module = getattr(network, name)
        weight = module.weight.data
        outputs = slice(first_output, first_output + weight.shape[0])
        rounded = all_bytes[first_byte : first_byte + weight.numel()].reshape(weight.shape[0], -1)
        values = rounded.astype(np.float32) * factors[outputs, None]
        weight.copy_(torch.from_numpy(values).reshape(weight.shape))
        if getattr(module, "bias", None) is not None:
            module.bias.data.copy_(torch.from_numpy(biases[outputs].copy()))
        first_byte += weight.numel()
        first_output += weight.shape[0]
    return network


def table_sizes():
    weights = [getattr(Network(), name).weight for name in Network.ORDER]
    return sum(weight.numel() for weight in weights), sum(weight.shape[0] for weight in weights)
