"""Generates code that contains every change of a source, of which one can be switched on."""

import re

# Not constexpr, so that the compiler does not optimize changes away. The number is read before main
# starts, or by an initializer that needs it earlier.
HEADER = """#pragma once
#include <cstdlib>
inline long activeMutant = -1;
[[gnu::noinline]] inline long readActiveMutant() {
  const char* const value = std::getenv("LUMOWATT_MUTANT");
  return activeMutant = value == nullptr ? 0 : std::atol(value);
}
[[gnu::always_inline]] inline bool isMutant(long number) {
  return (activeMutant < 0 ? readActiveMutant() : activeMutant) == number;
}
static const bool mutantIsKnown = isMutant(0);
"""

MARK = re.compile(rb"/\*(\d+):(\d+)([<>])\*/")
KEYWORD = re.compile(rb"/\*(\d+)\*/")


def render(source, alone=None):
    """Returns the code of the source with all switchable changes. Applies the change `alone`, if any,
    permanently."""
    edits = [each for each in source.places.values()
             if each.switchable or alone is not None and alone.place is each]
    # Outer places come before inner ones, and a place comes before insertions after it.
    edits.sort(key=lambda each: (each.start, -each.end))
    keywords = [each for each in source.constants if not each.fixed]
    return _render(source, 0, len(source.bytes), edits, keywords, alone)


def _render(source, start, end, edits, keywords, alone):
    code = []
    at = start
    nested = [each for each in edits if start <= each.start and each.end <= end]
    while nested:
        place = nested[0]
        inner = [each for each in nested[1:] if each.end <= place.end and place.end > place.start]
        nested = [each for each in nested[1:] if each not in inner and each.start >= place.end]
        code.append(_constants(source, at, place.start, keywords))
        code.append(_place(source, place, inner, keywords, alone))
        at = place.end
    code.append(_constants(source, at, end, keywords))
    return b"".join(code)


def _constants(source, start, end, keywords):
    code = []
    at = start
    for constant in sorted(keywords, key=lambda each: each.keyword):
        if at <= constant.keyword < end:
            code.append(source.bytes[at:constant.keyword]
                        + b"/*%d*/%s" % (constant.keyword, constant.replacement.encode()))
            at = constant.keyword + len("constexpr")
    return b"".join(code) + source.bytes[at:end]


def _place(source, place, inner, keywords, alone):
    original = place.insertion.encode() or _render(
        source, place.start, place.end, inner, keywords, alone)
    prefix = b"; " if place.insertion else b""
    if alone is not None and alone.place is place:
        code = alone.code.encode()
        is_simple = re.fullmatch(rb"[\w.:]+|\"[^\"]*\"|'[^']*'|[\w:]*[({].*[)}]", code, re.S)
        return prefix + (code if is_simple else b"(" + code + b")")
    cast = place.cast.encode()
    alternatives = b"".join(
        b"isMutant(%d)?%s(%s):" % (each.number, cast, each.code.encode())
        for each in place.changes)
    return b"%s/*%d:%d<*/(%s%s(%s))/*%d:%d>*/" % (
        prefix, place.start, place.end, alternatives, cast, original, place.start, place.end)


def blame(source, rendered, offset):
    """Returns the innermost place around an offset in the rendered code, and the constant declared
    at the offset. Either may be None."""
    around = []
    for found in MARK.finditer(rendered, 0, offset):
        if found[3] == b"<":
            around.append((int(found[1]), int(found[2])))
        else:
            around.remove((int(found[1]), int(found[2])))
    keywords = list(KEYWORD.finditer(rendered, 0, offset))
    constant = None
    if keywords and not re.search(rb"[;=]", rendered[keywords[-1].end():offset]):
        constant = next(each for each in source.constants if each.keyword == int(keywords[-1][1]))
    return source.places[around[-1]] if around else None, constant
