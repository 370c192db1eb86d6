#!/usr/bin/env python3
"""Compares arithmetic under random profiles with what this file says each choice means.

    arithmetic.py PROGRAM [COUNT [SEED]]

PROGRAM is what expressions.cpp is built to. The numbers here are exact and without a width; a width
is imposed on results by the rules below, which are written from docs/eval.md.
"""
import json
import random
import subprocess
import sys

CHOICES = {
    "sign": ["signed", "unsigned"],
    "stored_sign": ["extended", "zeros"],
    "overflow": ["wrap", "saturate", "error"],
    "quotient": ["toward-zero", "down"],
    "division_by_zero": ["error", "zero", "greatest"],
    "left_shift": ["drop", "as-product"],
    "right_shift": ["arithmetic", "logical"],
    "shift_beyond": ["error", "all-out", "modulo"],
    "negative_power": ["error", "zero"],
    "field_bits": ["lowest-count", "lowest-highest", "highest-lowest"],
}
ARITHMETIC = ["+", "-", "*", "/", "|", "&", "%", "^", ">>", "<<", "pow"]
COMPARISONS = {
    "==": lambda x, y: x == y, "!=": lambda x, y: x != y,
    ">": lambda x, y: x > y, ">=": lambda x, y: x >= y,
    "<": lambda x, y: x < y, "<=": lambda x, y: x <= y,
}
EXPRESSIONS_OF_A_PROFILE = 500


class Stop(Exception):
    """An expression without a number: its text says "unknown" or "error"."""


class Rules:
    def __init__(self, profile):
        self.profile = profile
        self.width = profile.get("width")
        self.has_form = "width" in profile and "sign" in profile
        self.is_signed = profile.get("sign") == "signed"
        if self.has_form:
            self.least = -(1 << self.width - 1) if self.is_signed else 0
            self.greatest = self.least + (1 << self.width) - 1

    def choice(self, key):
        if key not in self.profile:
            raise Stop("unknown")
        return self.profile[key]

    def low_bits(self, number):
        return (number - self.least) % (1 << self.width) + self.least

    def fit(self, number):
        if self.least <= number <= self.greatest:
            return number
        overflow = self.choice("overflow")
        if overflow == "error":
            raise Stop("error")
        if overflow == "wrap":
            return self.low_bits(number)
        return self.least if number < self.least else self.greatest

    def stored(self, word):
        number = word
        if self.is_signed and word >= 1 << 31:
            extended = self.profile.get("stored_sign") == "extended"
            if self.width is None and not extended:
                raise Stop("unknown")
            if extended or self.width <= 32 or self.choice("stored_sign") == "extended":
                number -= 1 << 32
        return self.fit(number) if self.has_form else number

    def given(self, number, is_bits):
        if not self.has_form or self.least <= number <= self.greatest:
            return number
        if is_bits and 0 <= number < 1 << self.width:
            return self.low_bits(number)
        raise Stop("error")

    def is_small(self, number):
        """Whether it is the same with and without a sign, in any width that may be meant."""
        return 0 <= number < 1 << (self.width or 8) - 1

    def divide(self, name, x, y):
        if y == 0:
            by_zero = self.choice("division_by_zero")
            if by_zero == "error":
                raise Stop("error")
            return 0 if by_zero == "zero" else self.greatest
        quotient = x // y
        if quotient < 0 and quotient * y != x and self.choice("quotient") == "toward-zero":
            quotient += 1
        return self.fit(quotient if name == "/" else x - quotient * y)

    def shift(self, name, x, count):
        if not 0 <= count < self.width:
            beyond = self.choice("shift_beyond")
            if beyond == "error":
                raise Stop("error")
            count = count % (1 << self.width) % self.width if beyond == "modulo" else self.width
        if name == "<<":
            product = x * (1 << count)
            if self.least <= product <= self.greatest:
                return product
            return self.low_bits(product) if self.choice("left_shift") == "drop" \
                else self.fit(product)
        if x >= 0 or count == 0:
            return x >> count
        if self.choice("right_shift") == "arithmetic":
            return x >> count
        return x % (1 << self.width) >> count

    def power(self, x, exponent):
        if exponent < 0:
            if self.choice("negative_power") == "error":
                raise Stop("error")
            return 0
        if abs(x) < 2 or exponent < 200:
            return self.fit(x ** (exponent if abs(x) > 1 else min(exponent, 2 + exponent % 2)))
        # Far beyond every width: only its sign and its low bits matter.
        low = pow(x, exponent, 1 << self.width)
        is_negative = x < 0 and exponent % 2 == 1
        return self.fit(low - (1 << 200) if is_negative else low + (1 << 200))

    def field(self, first, second, x):
        form = self.choice("field_bits")
        if x < 0 and self.width is None:
            raise Stop("unknown")
        lowest, count = first, second
        if form != "lowest-count":
            lowest, highest = (first, second) if form == "lowest-highest" else (second, first)
            count = highest - lowest + 1
            if count < 1:
                raise Stop("error")
        pattern = x if x >= 0 else x % (1 << self.width)
        bits = pattern >> lowest & (1 << min(count, 64)) - 1
        return self.low_bits(bits) if self.has_form else bits

    def calculate(self, name, x, y):
        if not self.has_form:
            raise Stop("unknown")
        if name in "/%":
            return self.divide(name, x, y)
        if name in ("<<", ">>"):
            return self.shift(name, x, y)
        if name == "pow":
            return self.power(x, y)
        if name in "|&^":
            return {"|": x | y, "&": x & y, "^": x ^ y}[name]
        return self.fit(x + y if name == "+" else x - y if name == "-" else x * y)


class Maker:
    """Random expressions, each with its postfix text and its expected result."""

    def __init__(self, rng):
        self.rng = rng

    def profile(self):
        profile = {"name": "random"}
        # Most state everything, for otherwise nearly all is unknown.
        share = self.rng.choice([1, 1, 1, 0.8])
        for key, options in CHOICES.items():
            if self.rng.random() < share:
                profile[key] = self.rng.choice(options)
        if self.rng.random() < share:
            profile["width"] = self.rng.choice([8, 16, 24, 32, 32, 32, 33, 63, 64])
        return profile

    def word(self):
        kind = self.rng.random()
        if kind < 0.4:
            return self.rng.randrange(0, 70)
        if kind < 0.7:
            return (1 << self.rng.randrange(0, 32)) + self.rng.randrange(-2, 3) & 0xFFFFFFFF
        return self.rng.getrandbits(32)

    def number(self, rules, text):
        word = self.word()
        if self.rng.random() < 0.7:
            text.append(str(word))
            return rules.stored(word)
        if self.rng.random() < 0.3:
            text += ["given", hex(word)]
            return rules.given(word, True)
        word -= self.rng.choice([0, 1 << 31, 1 << 32])
        text += ["given", str(word)]
        return rules.given(word, False)

    def value(self, rules, text, depth):
        """The result of what it appends to the text; of two that have none, an error counts."""
        if depth == 0 or self.rng.random() < 0.2:
            return self.number(rules, text)
        kind = self.rng.random()
        if kind < 0.1:
            x = self.attempt(rules, text, depth)
            first, second = self.rng.randrange(0, 70), self.rng.randrange(0, 70)
            text.append(f"field {first} {second}")
            return rules.field(first, second, self.number_of(x))
        x = self.attempt(rules, text, depth)
        y = self.attempt(rules, text, depth)
        name = self.rng.choice(list(COMPARISONS) if kind < 0.2 else ARITHMETIC)
        text.append(name)
        if "error" in (x, y):
            raise Stop("error")
        x, y = self.number_of(x), self.number_of(y)
        if name in COMPARISONS:
            if not (rules.is_small(x) and rules.is_small(y)):
                rules.choice("sign")
            return 1 if COMPARISONS[name](x, y) else 0
        return rules.calculate(name, x, y)

    def attempt(self, rules, text, depth):
        try:
            return self.value(rules, text, depth - 1)
        except Stop as stop:
            return str(stop)

    @staticmethod
    def number_of(result):
        if isinstance(result, str):
            raise Stop(result)
        return result

    def expression(self, rules):
        text = []
        result = self.attempt(rules, text, 1 + self.rng.randrange(1, 4))
        return " ".join(text), str(result)


def main():
    program = sys.argv[1]
    count = int(sys.argv[2]) if len(sys.argv) > 2 else 1000000
    maker = Maker(random.Random(int(sys.argv[3]) if len(sys.argv) > 3 else 7))
    lines, expected, places = [], [], []
    while len(expected) < count:
        profile = maker.profile()
        rules = Rules(profile)
        lines.append("profile " + json.dumps(profile))
        for _ in range(min(EXPRESSIONS_OF_A_PROFILE, count - len(expected))):
            text, result = maker.expression(rules)
            lines.append(text)
            expected.append(result)
            places.append((profile, text))
    found = subprocess.run([program], input="\n".join(lines) + "\n", capture_output=True, text=True,
                           check=True).stdout.splitlines()
    wrong = [i for i in range(count) if i >= len(found) or found[i] != expected[i]]
    for i in wrong[:10]:
        profile, text = places[i]
        print(f"{json.dumps(profile)}: {text}: expected {expected[i]}, "
              f"found {found[i] if i < len(found) else 'nothing'}")
    numbers = sum(result not in ("unknown", "error") for result in expected)
    print(f"{count} expressions, {numbers} with a number: {len(wrong)} differ")
    # A test that expects nothing but what is unknown would not show much.
    sys.exit(1 if wrong or numbers * 3 < count else 0)


if __name__ == "__main__":
    main()
