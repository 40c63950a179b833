"""Reads a ".ttin" surface file as docs/ttin-format.md describes it."""

import struct


def text_of(field):
    return field.split(b"\0", 1)[0].decode("utf-8")


def records(form, data, at, count):
    """`count` records of the big-endian form from offset `at` on, and the offset behind them."""
    end = at + count * struct.calcsize(form)
    return list(struct.iter_unpack(form, data[at:end])), end


def read(path):
    with open(path, "rb") as file:
        data = file.read()
    magic, version, name, point_count, triangle_count = struct.unpack_from(">3sH24sii", data, 0)
    assert magic == b"DTM" and version == 1
    statistics = struct.unpack_from(">6d", data, 37)
    points, at = records(">24s3d", data, 85, point_count)
    surface = {"name": text_of(name), "triangles": triangle_count, "statistics": statistics}
    surface["points"] = [(text_of(point[0]), *point[1:]) for point in points]
    if at < len(data):
        counts = struct.unpack_from(">3i", data, at)
        hull, at = records(">i", data, at + 12, counts[0])
        edges, at = records(">2i6d", data, at, counts[1])
        faces, at = records(">3i", data, at, counts[2])
        surface["tin"] = (hull, edges, faces)
    assert at == len(data)
    return surface
