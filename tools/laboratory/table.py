"""The table of what is right on which desktop, as Markdown."""

from cases import COLUMNS


def is_right(tried):
    return not any(each["wrong"] for each in tried["cells"])


def cell(tried, column):
    cells = [each for each in tried["cells"] if each["column"] == column]
    if not cells:
        return "–"
    wrong = [each["case"] for each in cells if each["wrong"]]
    if len(wrong) in (0, len(cells)):
        return "**no**" if wrong else "yes"
    return f"**no**: {', '.join(wrong)}"


def table(results):
    """`results` is what run_cases.py wrote, by the desktop's name."""
    lines = ["| Desktop | " + " | ".join(COLUMNS) + " |", "|---" * (len(COLUMNS) + 1) + "|"]
    for name, tried in results.items():
        cells = [cell(tried, column) for column in COLUMNS]
        lines.append(f"| {name} ({', '.join(tried['versions'])}) | " + " | ".join(cells) + " |")
    return "\n".join(lines)
