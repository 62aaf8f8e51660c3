"""Whether a row meets its goal."""

NOISE = 1.05  # "As before": two runs of one program differ by as much.
ROUNDED = 0.005  # Ratios are shown with two decimals, and judged as shown.
FLAT = 4  # Times the figure of the smallest size: beyond the caches each step waits for memory.


def met(row, rows):
    """True or false; None without a goal, or without the figure that it is held against."""
    after = row.figures.get("after")
    limit = limit_of(row, rows)
    return None if after is None or limit is None else after <= limit


def limit_of(row, rows):
    """The highest figure that meets the goal."""
    words = row.goal.split()
    if not words:
        return None
    if row.goal == "as before":
        return scaled(row.figures.get("before"), NOISE)
    if row.goal == "flat":
        smallest = min((other for other in rows if other.job == row.job), key=lambda other: other.size)
        return scaled(smallest.figures.get("after"), FLAT)
    if words[0].endswith("x"):
        times = float(words[0][:-1])
        if len(words) == 1:
            return scaled(row.figures.get("baseline"), times + ROUNDED)
        return scaled(figure_at(row.job, row.goal.split(" of ")[1], rows), times)
    units = {"ns": 1, "us": 1000, "bytes": 1, "block": 1, "blocks": 1}
    return float(words[0]) * units[words[1]]


def scaled(figure, times):
    return None if figure is None else figure * times


def figure_at(job, shown, rows):
    """The figure of that job at another size; None when that was not measured."""
    for other in rows:
        if other.job == job and other.shown == shown:
            return other.figures.get("after")
    return None
