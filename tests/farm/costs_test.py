"""Pieces of equal cost, and names of machines: what needs no recording."""

import unittest

import support  # noqa: F401 (it finds the farm's modules)

from vyr_farm import costs, join, parallel, recorder
from vyr_farm.failure import Failure

HEAD = recorder.Head("Night (00112233445566778899aabbccddeeff)", "64x36", "10", 100, 1099, "llvmpipe")


class Division(unittest.TestCase):
    """Pieces of equal cost. The costs are invented; a frame is the smallest difference."""

    def divide(self, frames, parts, start=0.0, sound=0.0):
        return costs.divide(costs.Costs(start, sound, frames), HEAD, parts)

    def expect_equal(self, pieces, frame):
        prices = [cost for _, _, cost in pieces]
        self.assertLessEqual(max(prices) - min(prices), 1.01 * frame)

    def test_pieces_follow_each_other_from_the_first_frame_to_the_last(self):
        pieces = self.divide([1.0] * 1000, 7)
        self.assertEqual((pieces[0][0], pieces[-1][1]), (100, 1099))
        for before, after in zip(pieces, pieces[1:]):
            self.assertEqual(after[0], before[1] + 1)

    def test_equal_frames_make_pieces_of_equal_length(self):
        self.assertEqual([last - first + 1 for first, last, _ in self.divide([1.0] * 1000, 8)], [125] * 8)

    def test_where_frames_cost_three_times_as_much_pieces_are_a_third_as_long(self):
        pieces = self.divide([1.0] * 400 + [3.0] * 200 + [1.0] * 400, 7)
        self.expect_equal(pieces, 3.0)
        self.assertLess(pieces[3][1] - pieces[3][0], (pieces[0][1] - pieces[0][0]) / 2)

    def test_no_error_grows_from_one_piece_to_the_next(self):
        self.expect_equal(self.divide([1.0 + frame % 7 for frame in range(1000)], 64), 8.0)

    def test_the_sound_counts_from_the_beginning_to_each_piece_s_end(self):
        pieces = self.divide([1.0] * 1000, 8, start=10.0, sound=60.0)
        self.expect_equal(pieces, 1.1)
        self.assertGreater(pieces[0][1] - pieces[0][0], pieces[-1][1] - pieces[-1][0])

    def test_no_piece_is_shorter_than_a_tenth_of_a_second(self):
        head = recorder.Head(HEAD.show, HEAD.size, "60", 0, 599, HEAD.driver)
        spike = [0.001] * 300 + [1000.0] + [0.001] * 299
        pieces = costs.divide(costs.Costs(0, 0, spike), head, 50)
        self.assertGreaterEqual(min(last - first + 1 for first, last, _ in pieces), 6)
        self.assertEqual(pieces[-1][1], 599)

    def test_more_pieces_than_that_are_refused(self):
        with self.assertRaisesRegex(Failure, "1000 pieces at most"):
            self.divide([1.0] * 1000, 1001)

    def test_frames_between_two_samples_cost_something_between(self):
        head = recorder.Head(HEAD.show, HEAD.size, "4", 0, 8, HEAD.driver)
        self.assertEqual(costs.spread_over_frames([(0.0, 1.0), (1.0, 3.0), (2.0, 3.0)], head),
                         [1.0, 1.5, 2.0, 2.5, 3.0, 3.0, 3.0, 3.0, 3.0])


class Measuring(unittest.TestCase):
    """What is drawn to know the costs of a recording."""

    def head(self, size, rate, last):
        return recorder.Head(HEAD.show, size, rate, 0, last, HEAD.driver)

    def test_is_small_and_has_the_recording_s_shape(self):
        self.assertEqual(costs.small_size(self.head("3840x2160", "60", 9)), (1920, 1080))
        self.assertEqual(costs.small_size(self.head("1000x500", "60", 9)), (678, 340))
        self.assertEqual(costs.small_size(self.head("1080x1920", "60", 9)), (540, 960))
        self.assertEqual(costs.small_size(self.head("64x36", "60", 9)), (64, 36))

    def test_draws_some_frames_for_each_piece_and_never_more_than_there_are(self):
        whole = self.head("3840x2160", "60", 12354)
        self.assertEqual(costs.sampling_rate(whole, 8), 1)  # 200 frames in 205.9 seconds
        self.assertEqual(costs.sampling_rate(whole, 1000), 30)
        self.assertLessEqual(costs.sampling_rate(self.head("64x36", "30000/1001", 59), 50), 30)


    def test_leaves_out_what_is_compiled_at_the_first_use(self):
        self.assertEqual(costs.without_spikes([9.0, 1.0, 1.0, 7.0, 1.0, 3.0, 3.0, 3.0, 8.0]),
                         [1.0, 1.0, 1.0, 1.0, 3.0, 3.0, 3.0, 3.0, 3.0])
        self.assertEqual(costs.without_spikes([9.0, 1.0]), [9.0, 1.0])


class Heads(unittest.TestCase):
    TEXT = ("Night, (a, b) (00112233445566778899aabbccddeeff), 64x36, 30000/1001 frames a second, frames 2-9, "
            "drawn by llvmpipe (LLVM 15.0.6, 256 bits), OpenGL 4.5")

    def test_are_read_whatever_the_show_is_called(self):
        head = recorder.Head.parse("# " + self.TEXT)
        self.assertEqual(head.show, "Night, (a, b) (00112233445566778899aabbccddeeff)")
        self.assertEqual(head.driver, "llvmpipe (LLVM 15.0.6, 256 bits), OpenGL 4.5")
        self.assertEqual(f"{head.recording()}, drawn by {head.driver}", self.TEXT)

    def test_are_nothing_else(self):
        for text in ("", "# frame, row", self.TEXT[:60], self.TEXT.replace("64x36", "64")):
            self.assertIsNone(recorder.Head.parse(text), text)


class Ranges(unittest.TestCase):
    def test_are_short(self):
        self.assertEqual(join.in_ranges([1, 2, 3, 5, 7, 8]), "1-3,5,7-8")


class Hosts(unittest.TestCase):
    def test_are_names(self):
        self.assertEqual(parallel.read_hosts("anna,bert@b.example,anna"), ["anna", "bert@b.example"])
        for text in ("", "a,,b", "-oProxyCommand=x", "a;b", "a b", "a,$(b)", "a@b@c"):
            with self.assertRaises(Failure, msg=text):
                parallel.read_hosts(text)


if __name__ == "__main__":
    unittest.main()
