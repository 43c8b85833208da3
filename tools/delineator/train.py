"""Trains the networks that read beats: for each fold of the cross-validation on the other records, then on all of them.

    tools/train_delineator.sh            everything again, from the recordings
    train.py BEATS OUT [NAME ...]        the named networks alone, as fold0-1 or all-3: what they learn from, and the seed

BEATS: the folder that `delineation_report --training` has written. OUT: where the tables of weights go, one for each
network, NAME.weights; when all of them are there, joined as fold0.weights to fold4.weights, and those of all records as
source files with network_beats.txt. A network whose table is there is not trained again. The same recordings and the
same version of the libraries give the same tables: seeds and folds are fixed, one thread.
"""

import math
import os
import sys

os.environ.setdefault("OMP_NUM_THREADS", "1")

import numpy as np
import torch
from torch import nn
from torch.nn import functional

import beats
import network
import tables

SEEDS = (1, 2, 3)  # of the networks whose mean is taken
FOLDS = 5
STEPS = 2000
RECORDS_A_STEP = 8
LEADS_A_STEP = (1, 2, 3, 6, 8, 8, 9, 10, 10, 12, 12)  # how many of the leads a step sees, by lot
LEARNING_RATE = 0.004
WEIGHT_DECAY = 0.03
KEPT_A_STEP = 0.99  # of the mean over the last half of the steps, which is the result
P_WAVE_WEIGHT = 0.3
# Width of the bell about a mark that the distribution of a point is to follow, ms.
BELLS = np.array([10, 8, 6, 6, 16, 12])


def bells(targets, widths):
    """The distributions about the targets, and 1 for each target that is there and in sight."""
    there = ~np.isnan(targets) & (targets > network.TIMES[0]) & (targets < network.TIMES[-1])
    away = (network.TIMES - np.where(there, targets, 0)[..., None]) / widths[:, None]
    curves = np.exp(-0.5 * away**2)
    curves /= curves.sum(-1, keepdims=True)
    return torch.from_numpy(curves.astype(np.float32)), torch.from_numpy(there.astype(np.float32))


def distance(logits, targets, widths):
    """Mean cross-entropy."""
    curves, there = bells(targets, widths)
    entropy = -(functional.log_softmax(logits, -1) * curves).sum(-1)
    return (entropy * there).sum() / there.sum().clamp(min=1)


def make_batch(records, random):
    leads = sorted(int(lead) for lead in random.choice(beats.LEADS, int(random.choice(LEADS_A_STEP)), replace=False))
    samples = [beats.Sample(record, random, leads) for record in records]
    rows = []
    for sample in samples:
        level = network.to_1000(sample.signal)[:, sample.first : sample.end]
        rows.append(network.make_input(level, sample.centre - sample.first, sample.rr))
    return samples, torch.from_numpy(np.stack(rows)), torch.from_numpy(np.stack([sample.names for sample in samples]))


def loss_of(net, records, random):
    samples, rows, names = make_batch(records, random)
    lead_points, all_points, p_wave = net(rows, names)
    all_leads = np.stack([sample.all_leads for sample in samples])[:, network.OF_ALL]
    loss = distance(lead_points, np.stack([sample.leads for sample in samples]), BELLS)
    loss = loss + distance(all_points, all_leads, BELLS[list(network.OF_ALL)])
    has_p = torch.tensor([sample.p_wave for sample in samples], dtype=torch.float32)
    known = ~torch.isnan(has_p)
    if known.any():
        odds = functional.binary_cross_entropy_with_logits(p_wave[known], has_p[known])
        loss = loss + P_WAVE_WEIGHT * odds
    return loss


def train(records, seed, name):
    torch.manual_seed(seed)
    random = np.random.default_rng(seed)
    net = network.Network()
    optimiser = torch.optim.AdamW(net.parameters(), LEARNING_RATE, weight_decay=WEIGHT_DECAY)
    # Records without a P wave are few: they are shown twice as often.
    rare = [r for r in records if r.has_p_wave(range(len(r.beats))) == 0]
    mean, waiting = None, []
    for step in range(STEPS):
        rate = LEARNING_RATE * min(1, (step + 1) / 50) * (1 + math.cos(math.pi * step / STEPS)) / 2
        for group in optimiser.param_groups:
            group["lr"] = rate
        if len(waiting) < RECORDS_A_STEP:
            everything = records + rare
            waiting = [everything[i] for i in random.permutation(len(everything))]
        batch = [waiting.pop() for _ in range(RECORDS_A_STEP)]
        loss = loss_of(net, batch, random)
        optimiser.zero_grad()
        loss.backward()
        nn.utils.clip_grad_norm_(net.parameters(), 2.0)
        optimiser.step()
        if step == STEPS // 2:
            mean = {key: value.detach().clone() for key, value in net.state_dict().items()}
        elif step > STEPS // 2:
            for key, value in net.state_dict().items():
                mean[key].mul_(KEPT_A_STEP).add_(value, alpha=1 - KEPT_A_STEP)
        if step % 200 == 0:
            print(f"{name}, step {step} of {STEPS}: {loss.item():.2f}", flush=True)
    net.load_state_dict(mean)
    return net


def name_of(fold, seed):
    return f"{'all' if fold is None else f'fold{fold}'}-{seed}"


def join(out, records):
    """What the program and its judge read, from the tables of the networks."""

    def made(fold):
        return [tables.read_binary(os.path.join(out, f"{name_of(fold, seed)}.weights")) for seed in SEEDS]

    for fold in range(FOLDS):
        tables.write_binary(os.path.join(out, f"fold{fold}.weights"), made(fold))
    shipped = made(None)
    for n, table in enumerate(shipped):
        tables.write_source(out, n, table)
    tables.write_beats(os.path.join(out, "network_beats.txt"), shipped, records)


def main():
    beats_folder, out = sys.argv[1:3]
    torch.set_num_threads(1)
    records = beats.read_records(beats_folder)
    os.makedirs(out, exist_ok=True)
    with open(os.path.join(out, "records.txt"), "w", encoding="ascii") as file:
        file.writelines(f"{record.number} {n % FOLDS}\n" for n, record in enumerate(records))
    networks = {name_of(fold, seed): (fold, seed) for seed in SEEDS for fold in (*range(FOLDS), None)}
    for name in sys.argv[3:] or networks:
        file = os.path.join(out, f"{name}.weights")
        if os.path.exists(file):
            continue
        fold, seed = networks[name]
        # Of the records in ascending order the n-th is left to the networks of fold n mod 5.
        seen = [record for n, record in enumerate(records) if n % FOLDS != fold]
        net = train(seen, 100 * seed + (FOLDS if fold is None else fold), name)
        tables.write_binary(file, [network.to_table(net)])
    if all(os.path.exists(os.path.join(out, f"{name}.weights")) for name in networks):
        join(out, records)


if __name__ == "__main__":
    main()
