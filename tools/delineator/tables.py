"""Tables of weights, for the cross-validation and as a source file, and the beats by which the C++ program is tested."""

import os

import numpy as np

import network

SOURCE_HEAD = """// Made by tools/train_delineator.sh, not by hand. The weights were learned from the beats and the
// cardiologists' marks of 160 records of the Lobachevsky University Electrocardiography Database 1.0.1 (A. I.
// Kalyakulina, I. I. Yusipov, V. A. Moskalenko, A. V. Nikolskiy, K. A. Kosonogov, G. V. Osipov, N. Yu.
// Zolotykh, M. V. Ivanchenko, "LUDB: A New Open-Access Validation Tool for Electrocardiogram Delineation
// Algorithms", IEEE Access 8, 186181-186190, 2020, doi 10.1109/ACCESS.2020.3029211; PhysioNet,
// doi 10.13026/eegm-h675), which is made available under the Open Data Commons Attribution License 1.0
// (opendatacommons.org/licenses/by/1-0).
#include "suite/kxanalyze/network_weights.h"

// clang-format off
namespace kx::analysis {
namespace {

"""
SOURCE_TAIL = """
}  // namespace

constinit const NetworkWeights kNetwork%d{kBytes, kFactors, kBiases};

}  // namespace kx::analysis
"""
WIDTH = 320
TEST_BEATS = 10
TEST_LEADS = (1, 7, 10)  # II, V2, V5


def write_binary(file, made):
    with open(file, "wb") as out:
        for table in made:
            for part in table:
                out.write(part.astype(part.dtype.newbyteorder("<")).tobytes())


def read_binary(file):
    """The table of one network."""
    data = open(file, "rb").read()
    bytes_count, outputs = network.table_sizes()
    floats = np.frombuffer(data[bytes_count:], "<f4")
    return np.frombuffer(data[:bytes_count], np.int8), floats[:outputs], floats[outputs:]


def rows_of(words):
    row, rows = "", []
    for word in words:
        if len(row) + len(word) + 1 > WIDTH:
            rows.append(row)
            row = ""
        row += word + ","
    return rows + [row]


def floating(value):
    text = np.format_float_positional(np.float32(value), unique=True, trim="0")
    return text + "f"


def write_source(folder, n, made):
    weights, factors, biases = made
    with open(os.path.join(folder, f"network_weights_{n + 1}.cpp"), "w", encoding="ascii") as out:
        out.write(SOURCE_HEAD)
        for name, kind, words in (
            ("kBytes", "std::int8_t", map(str, weights)),
            ("kFactors", "float", map(floating, factors)),
            ("kBiases", "float", map(floating, biases)),
        ):
            out.write(f"constexpr {kind} {name}[] = {{\n" + "\n".join(rows_of(words)) + "};\n")
        out.write(SOURCE_TAIL % (n + 1))


def write_beats(file, made, records):
    """Ten beats of three leads, 500 samples a second, with what the networks say of them together."""
    nets = [network.from_table(*table) for table in made]
    chosen = records[:: len(records) // TEST_BEATS][:TEST_BEATS]
    with open(file, "w", encoding="ascii") as out:
        for record in chosen:
            kept = [i for i in range(len(record.beats)) if record.kept[i]]
            signal = np.rint(record.median_beat(kept)[list(TEST_LEADS)])
            level = network.to_1000(signal)
            all_points, lead_points, p_wave = network.run(nets, level, record.centre, record.rr, TEST_LEADS)
            out.write(f"beat {record.number} {record.rr} {record.centre}\n")
            for lead, samples in zip(TEST_LEADS, signal):
                out.write(f"lead {lead} " + " ".join(str(int(value)) for value in samples) + "\n")
            points = np.concatenate([all_points, lead_points.ravel(), [p_wave]])
            out.write("points " + " ".join(f"{value:.4f}" for value in points) + "\n")
