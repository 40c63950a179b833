"""Has the program that is the argument write surface files and compares every number in them with what it says of them."""

import pathlib
import struct
import subprocess
import sys
import tempfile

import read_ttin


def words(kind, *values):
    """A line as the program writes it: doubles as the digits of their bits."""
    texts = [struct.pack(">d", v).hex() if isinstance(v, float) else str(v) for v in values]
    return " ".join([kind, *texts])


def lines_of(surface):
    lines = [words("name", surface["name"]), words("triangles", surface["triangles"])]
    lines.append(words("statistics", *surface["statistics"]))
    lines += [words("point", *point) for point in surface["points"]]
    hull, edges, faces = surface.get("tin", ([], [], []))
    lines += [words("hull", *entry) for entry in hull]
    lines += [words("edge", *edge) for edge in edges]
    return lines + [words("face", *face) for face in faces]


def main():
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([sys.argv[1], folder], check=True)
        files = sorted(pathlib.Path(folder).glob("*.ttin"))
        assert [file.stem for file in files] == ["empty", "odd", "site"], files
        for file in files:
            expected = file.with_suffix(".txt").read_text(encoding="utf-8").splitlines()
            found = lines_of(read_ttin.read(file))
            for number, (a, b) in enumerate(zip(expected, found), 1):
                assert a == b, f"{file.name}, line {number}: {a!r} was written, {b!r} was read"
            assert len(expected) == len(found), f"{file.name}: {len(expected)} lines written, {len(found)} read"
            print(f"{file.name}: {len(found)} lines agree")


if __name__ == "__main__":
    main()
