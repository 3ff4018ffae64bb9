"""apply() against `zvtran apply`, which makes the same host call from the command line: the same bytes for every
transition, and behind each exception the result code zvtran reports. The catalogue against zvtran's."""
import json
from dataclasses import dataclass, field

import numpy as np
import pytest
import zvtransition as zv
from conftest import on_fresh_thread, random_frame, raw, zvtran, zvtran_apply

CATALOGUE = zv.catalogue()


@dataclass
class Case:
    id: int
    style: int
    a: tuple = (64, 48)
    b: tuple = None  # a's size unless given
    out: tuple = None  # None: a new frame, a copy of a
    position: float = 0.4
    duration: float = 1.0
    params: dict = field(default_factory=dict)

    def __str__(self):
        sizes = "-".join("%dx%d" % s for s in (self.a, self.b, self.out) if s)
        return f"{self.id}-style{self.style}-{sizes}-at{self.position}-{self.params or ''}"


# Every transition in its first and last styles and one past them, then frames of three sizes (odd ones as planes),
# parameters, and the positions and durations a host may hand over.
CASES = [Case(t["id"], s) for t in CATALOGUE for s in sorted({0, max(len(t["styles"]) - 1, 0), len(t["styles"])})] + [
    Case(1, 4, (64, 48), (48, 36), (56, 40)),
    Case(3, 2, (33, 25), (41, 17), (37, 21)),
    Case(5, 2, (37, 21), (64, 48), (37, 21), 0.7),
    Case(13, 5, (48, 36), (64, 48)),
    Case(14, 3, (33, 25), (41, 17), (37, 21), 0.6),
    Case(15, 0, (64, 48), (40, 30), params={"param1": 6, "param2": 4.0}),
    Case(16, 1, (64, 48), (48, 32), params={"param1": 8 | 6 << 16, "param2": float(30 | 20 << 16)}),
    Case(17, 0, (64, 48), (56, 40), (64, 48), 0.5, params={"param1": 0xFF00FF00}),
    Case(17, 0, params={"param3": 0x800000}),
    Case(38, 0, (37, 21), (33, 25)),
    Case(39, 6, (64, 48), (48, 36)),
    Case(44, 1, params={"param1": 30, "param2": 60.0}),
    Case(57, 0, (48, 36), (64, 48), (56, 40)),
    Case(59, 1, (64, 48), (48, 36)),
    Case(14, 0, position=float("nan")),
    Case(14, 0, duration=0.0),
    Case(1, 0, position=-3.0, duration=-1.0),
    Case(2, 1, position=1e300),
]


@pytest.mark.parametrize("case", CASES, ids=str)
def test_apply_gives_the_bytes_of_zvtran_apply(case, tmp_path):
    a = random_frame(*case.a, seed=1)
    b = random_frame(*(case.b or case.a), seed=2)
    out = random_frame(*case.out, seed=3) if case.out else None
    options = [f"--{k}={v}" for k, v in dict(case.params, style=case.style, position=case.position,
                                             duration=case.duration).items()]
    result, expected = zvtran_apply(tmp_path, case.id, a, b, a if out is None else out, *options)
    call = lambda: zv.apply(case.id, a, b, case.position, duration=case.duration, style=case.style, out=out,
                            **case.params)
    if result == 3:
        with pytest.raises(ValueError, match=r"style %d is out of range for .* \(styles 0-\d\)" % case.style):
            on_fresh_thread(call)
        return
    got = on_fresh_thread(call)
    assert raw(got) == expected
    assert out is None or got is out


def test_apply_takes_display_names_in_any_case():
    a, b = random_frame(64, 48, 1), random_frame(64, 48, 2)
    by_id = zv.apply(22, a, b, 0.5, style=1)
    for name in ("Double Slide", "double slide", "DOUBLE SLIDE"):
        assert np.array_equal(zv.apply(name, a, b, 0.5, style=1), by_id)


def test_catalogue_is_zvtrans():
    listed = json.loads(zvtran("catalogue", "--json"))
    assert [t["id"] for t in CATALOGUE] == list(range(1, 67))
    for mine, theirs in zip(CATALOGUE, listed):
        assert mine["name"] == theirs["name"]
        assert mine["styles"] == (theirs["styles"] or [])[: theirs["style_count"]]
        assert mine["labels"] == theirs["params"]["labels"]


# The output's buffer is the given out, in either form; an input need not be contiguous; out=None starts from a.
@pytest.mark.parametrize("planes", [False, True])
def test_out_is_written_in_place(planes):
    a, b = random_frame(64, 48, 1, planes), random_frame(64, 48, 2, planes)
    out = random_frame(64, 48, 3, planes)
    got = zv.apply("Fade", a, b, 1.0, out=out)
    assert got is out and raw(out) == raw(b)
    assert raw(zv.apply("Fade", a, b, 0.0)) == raw(a)


def test_inputs_with_strides_are_read_as_packed_copies():
    a, b = random_frame(64, 48, 1), random_frame(64, 48, 2)
    wide_a = np.zeros((72, 128), np.uint8)
    wide_a[:, ::2] = a
    reversed_b = b[::-1].copy()[::-1]
    assert raw(zv.apply(5, wide_a[:, ::2], reversed_b, 0.3)) == raw(zv.apply(5, a, b, 0.3))
