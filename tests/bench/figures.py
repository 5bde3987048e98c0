"""What is made of the measurements: ratios with their intervals, verdicts, Markdown tables."""
import dataclasses
import random
from statistics import median

RESAMPLES = 10000


@dataclasses.dataclass(frozen=True)
class Ratio:
    """The median of the program's figures over the median of the baseline's, and the bounds of its
    95 % interval."""

    value: float
    low: float
    high: float

    def misses(self, bound):
        """Whether the bound is missed beyond doubt: by the whole interval."""
        return self.low > bound

    def __str__(self):
        return f"{self.value:.3f} ({self.low:.3f} to {self.high:.3f})"


def ratio_of_medians(pairs, resamples=RESAMPLES):
    """The ratio for pairs (program, baseline), its interval by the bootstrap: pairs are drawn anew,
    so that what slowed both of a pair down counts for both."""
    chance = random.Random(0)  # the same measurements give the same interval
    ratios = sorted(_ratio(chance.choices(pairs, k=len(pairs))) for _ in range(resamples))
    return Ratio(_ratio(pairs), ratios[int(0.025 * resamples)], ratios[int(0.975 * resamples)])


def _ratio(pairs):
    program, baseline = zip(*pairs)
    return median(program) / median(baseline)


def table(heads, rows):
    """A Markdown table; all columns but the first are figures."""
    lines = [heads, ["---"] + ["---:"] * (len(heads) - 1), *rows]
    return "\n".join(f"| {' | '.join(map(str, line))} |" for line in lines)
