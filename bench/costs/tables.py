"""Rows as tables of a page, and pages of which a part is written."""

from goals import met

SIGNS = {True: "yes", False: "**no**", None: ""}


def amount(figure, unit=""):
    """One decimal below ten, where it says something; none above."""
    if figure is None:
        return ""
    text = f"{figure:.1f}" if figure < 9.95 else f"{figure:.0f}"
    return text.removesuffix(".0") + unit if not unit else text + unit


def ratio(row):
    after, baseline = row.figures.get("after"), row.figures.get("baseline")
    return f"{after / baseline:.2f}x" if after is not None and baseline else ""


def table(head, lines):
    yield "| " + " | ".join(head) + " |"
    yield "|" + "---|" * len(head)
    for line in lines:
        yield "| " + " | ".join(line) + " |"


def time_table(shown, rows, with_before):
    """The rows shown, judged among all."""
    head = ["job", "size", "before", "after", "baseline", "ratio", "goal", "met"]
    if not with_before:
        head[2:4] = ["library"]
    lines = []
    for row in shown:
        figures = [amount(row.figures.get(whose), " ns") if whose in row.figures else ""
                   for whose in ("before", "after", "baseline")]
        lines.append([row.job, row.shown, *figures[0 if with_before else 1:], ratio(row), row.goal,
                      SIGNS[met(row, rows)]])
    return table(head, lines)


def memory_table(memory, with_before, jobs=None):
    """Blocks, bytes asked for and bytes taken in one line for each thing counted, or for some."""
    kinds = (("blocks", "blocks"), ("asked", "bytes asked for"), ("taken", "bytes taken"))
    head = ["what", "nodes"]
    for _, title in kinds:
        head += [f"{title}, before", "after"] if with_before else [title]
    head += ["baseline: blocks", "bytes taken", "goal", "met"]
    lines = []
    for place, taken in enumerate(memory.rows["taken"]):
        if jobs and taken.job not in jobs:
            continue
        line = [taken.job, taken.shown]
        for kind, _ in kinds:
            figures = memory.rows[kind][place].figures
            line += [amount(figures.get(whose)) for whose in ("before", "after")[not with_before:]]
        blocks = memory.rows["blocks"]
        line += [amount(blocks[place].figures.get("baseline")), amount(taken.figures.get("baseline"))]
        judged = blocks if "block" in taken.goal else memory.rows["taken"]
        line += [taken.goal, SIGNS[met(judged[place], judged)]]
        lines.append(line)
    return table(head, lines)


def class_table(memory, with_before):
    head = ["class", "bytes, before", "after"] if with_before else ["class", "bytes"]
    lines = []
    for name, sizes in memory.classes.items():
        whose = ("before", "after") if with_before else ("after",)
        lines.append([f"`{name}`", *(str(sizes.get(each, "")) for each in whose)])
    return table(head, lines)


def replace_part(path, part, lines):
    """Writes what stands between the two comments of that part of a page anew."""
    begin, end = f"<!-- {part}: written by scripts/draw-costs -->", f"<!-- end of {part} -->"
    with open(path, encoding="utf-8") as page:
        text = page.read()
    if text.count(begin) != 1 or text.count(end) != 1:
        raise SystemExit(f"{path} has no part {part}")
    before, _, rest = text.partition(begin)
    after = rest.partition(end)[2]
    with open(path, "w", encoding="utf-8") as page:
        page.write(before + begin + "\n" + "\n".join(lines) + "\n" + end + after)
