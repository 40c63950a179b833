"""Triangles of a ".sjw" file as a LandXML surface: the library reads such files but writes none."""


def corners(sjw):
    """The positions of a ".sjw" text, three a triangle, as (x, y, z) in its own digits."""
    numbers = sjw.split("\n")
    if numbers.pop() != "nil" or len(numbers) % 9 != 0:
        raise ValueError("not a whole .sjw file")
    return [tuple(numbers[i:i + 3]) for i in range(0, len(numbers), 3)]


def from_sjw(sjw, name):
    positions = corners(sjw)
    numbers = {position: i for i, position in enumerate(dict.fromkeys(positions), 1)}
    points = "\n".join(f'<P id="{i}">{y} {x} {z}</P>' for (x, y, z), i in numbers.items())
    faces = "\n".join(f"<F>{numbers[positions[i]]} {numbers[positions[i + 1]]} {numbers[positions[i + 2]]}</F>"
                      for i in range(0, len(positions), 3))
    return (f'<?xml version="1.0"?>\n<LandXML version="1.2"><Surfaces><Surface name="{name}">'
            f'<Definition surfType="TIN">\n<Pnts>\n{points}\n</Pnts>\n<Faces>\n{faces}\n</Faces>\n'
            "</Definition></Surface></Surfaces></LandXML>\n")
