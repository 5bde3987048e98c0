"""The benchmark's verdicts, on figures that are known."""
import figures


def test_the_ratio_is_that_of_the_medians():
    pairs = [(10, 10), (12, 10), (30, 40)]
    assert figures.ratio_of_medians(pairs).value == 1.2


def test_equal_pairs_leave_no_doubt():
    ratio = figures.ratio_of_medians([(11, 10)] * 5)
    assert (ratio.low, ratio.high) == (1.1, 1.1)


def test_the_interval_holds_the_ratio_and_widens_with_the_spread():
    quiet = figures.ratio_of_medians([(100 + i % 3, 100) for i in range(30)])
    noisy = figures.ratio_of_medians([(60 + 3 * i, 100) for i in range(30)])
    assert quiet.low <= quiet.value <= quiet.high
    assert noisy.high - noisy.low > 3 * (quiet.high - quiet.low)


def test_what_slows_both_of_a_pair_down_does_not_widen_the_interval():
    together = figures.ratio_of_medians([(10 + i, 10 + i) for i in range(30)])
    apart = figures.ratio_of_medians([(10 + i, 39 - i) for i in range(30)])
    assert together.high - together.low < (apart.high - apart.low) / 3


def test_a_bound_is_missed_only_by_the_whole_interval():
    ratio = figures.Ratio(1.06, 1.04, 1.08)
    assert not ratio.misses(1.05)
    assert ratio.misses(1.03)


def test_a_table_is_markdown():
    assert figures.table(["what", "ms"], [["start", 70], ["OK", 90]]) == (
        "| what | ms |\n| --- | ---: |\n| start | 70 |\n| OK | 90 |")
