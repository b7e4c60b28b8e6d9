"""Error of both tails of a family against the smaller tail, as a small SVG."""

import math
import statistics

WIDTH, HEIGHT = 620, 330
LEFT, RIGHT, TOP, BOTTOM = 62, 24, 34, 46
COLOURS = ("#c8102e", "#1f6fb4", "#2e8540")
POINTS = (120, 85, 85)  # ours, then the two best peers
X_TICKS = (1, 5, 20, 50, 100, 150, 200, 280)
SMALLEST, LARGEST = -17, 0


def x_of(tail):
    """The square root of the digits keeps the centre from vanishing at the edge."""
    share = math.sqrt(-math.log10(tail) / X_TICKS[-1])
    return round(LEFT + share * (WIDTH - LEFT - RIGHT))


def y_of(error):
    exponent = math.log10(error) if 0 < error < 1 else LARGEST if error else SMALLEST
    share = (LARGEST - max(SMALLEST, exponent)) / (LARGEST - SMALLEST)
    return round(TOP + share * (HEIGHT - TOP - BOTTOM))


def pairs_of(name, tails):
    return sorted(((check.tail, error) for tail in tails for check, error in tail.get(name, ())))


def thinned(pairs, count):
    step = max(1.0, len(pairs) / count)
    return [pairs[int(i * step)] for i in range(min(count, len(pairs)))]


def dots(pairs, colour):
    path = "".join(f"M{x_of(tail)} {y_of(error)}h0" for tail, error in pairs)
    return f'<path d="{path}" stroke="{colour}" stroke-width="4" stroke-linecap="round" opacity=".7"/>'


def text(x, y, content, anchor="middle", colour="#222", extra=""):
    return f'<text x="{x}" y="{y}" text-anchor="{anchor}" fill="{colour}"{extra}>{content}</text>'


def power_of_ten(exponent):
    return f"1e{exponent}" if exponent else "1"


def axes():
    lines, labels = [], []
    bottom, right = HEIGHT - BOTTOM, WIDTH - RIGHT
    for digits in X_TICKS:
        x = x_of(10.0**-digits)
        lines.append(f"M{x} {TOP}V{bottom}")
        labels.append(text(x, bottom + 16, power_of_ten(-digits)))
    for exponent in range(-16, 1, 4):
        y = y_of(10.0**exponent)
        lines.append(f"M{LEFT} {y}H{right}")
        labels.append(text(LEFT - 6, y + 4, power_of_ten(exponent), "end"))
    labels.append(text((LEFT + right) // 2, HEIGHT - 8, "smaller tail"))
    middle = (TOP + bottom) // 2
    labels.append(text(14, middle, "relative error", extra=f' transform="rotate(-90 14 {middle})"'))
    return [f'<path d="{"".join(lines)}" stroke="#ddd"/>', *labels]


def best_peers(names, tails):
    """The two whose median error is smallest."""
    medians = sorted((statistics.median(error for _, error in pairs), name)
                     for name in names[1:] if (pairs := pairs_of(name, tails)))
    return [name for _, name in medians[:2]]


def svg(family, names, tails):
    shown = [names[0], *best_peers(names, tails)]
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" width="{WIDTH}"'
             f' height="{HEIGHT}" font-family="sans-serif" font-size="12" fill="none">',
             f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#fff"/>',
             text(LEFT, 20, f"{family}: both tails", "start", extra=' font-weight="bold"'), *axes()]
    series = list(zip(shown, COLOURS, POINTS))
    for name, colour, count in reversed(series):  # ours last, on top
        parts.append(dots(thinned(pairs_of(name, tails), count), colour))
    for i, (name, colour, _) in enumerate(series):
        x = WIDTH - RIGHT - 80 * (len(series) - i)
        parts.append(f'<circle cx="{x}" cy="16" r="4" fill="{colour}"/>')
        parts.append(text(x + 8, 20, name, "start", colour))
    return "\n".join([*parts, "</svg>\n"])
