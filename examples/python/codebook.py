#!/usr/bin/env python3
"""Prints a small codebook of a system file (.sav, .zsav): its variables with their labels, value
labels and missing values, found by XPath queries on the file's dictionary document alone.

    python3 examples/python/codebook.py examples/data/demo.sav
"""

import sys
import warnings

import transspace


def quoted(name):
    """An XPath string literal for a name (names may hold either quote, not both)."""
    return f'"{name}"' if "'" in name else f"'{name}'"


def missing_values(dictionary, context):
    """Discrete missing values as they are; a range as "low thru high"."""
    shown = []
    count = int(dictionary.query_number(context, "count(missingValue)"))
    for i in range(1, count + 1):
        data = dictionary.query_string(context, f"missingValue[{i}]/@data")
        kind = dictionary.query_string(context, f"missingValue[{i}]/@type")
        if kind == "lowerBound":
            shown.append(f"{data} thru")
        elif kind == "upperBound" and shown and shown[-1].endswith(" thru"):
            shown[-1] += f" {data}"
        else:
            shown.append(data)
    return shown


def value_labels(dictionary, variable):
    labelled = f"valueLabelSet[valueLabelVariable/@name={quoted(variable)}]/valueLabel"
    values = dictionary.query("/dictionary", f"{labelled}/@value")
    labels = dictionary.query("/dictionary", f"{labelled}/@label")
    return list(zip(values, labels))


def codebook(path):
    with warnings.catch_warnings(record=True) as tolerated:
        warnings.simplefilter("always", transspace.ReadWarning)
        dictionary = transspace.read_dictionary(path)
    for warning in tolerated:
        print(f"warning: {warning.message}", file=sys.stderr)

    rows = dictionary.query_string("/dictionary", "@rowCount")
    names = dictionary.query("/dictionary", "variable/@name")
    print(f"{path}: {len(names)} variables, {rows} cases")
    weight = dictionary.query_string("/dictionary", "weightVariable/@name")
    if weight:
        print(f"weighted by {weight}")
    for name in names:
        context = f"/dictionary/variable[@name={quoted(name)}]"
        label = dictionary.query_string(context, "@label")
        kind = "string" if dictionary.query_string(context, "@type") != "0" else "numeric"
        format_ = "{}{}.{}".format(*(dictionary.query_string(context, f"variableFormat/@{part}")
                                      for part in ("type", "width", "decimals")))
        level = dictionary.query_string(context, "@measurementLevel")
        print()
        print(f"{name}  {label}" if label else name)
        print(f"    {kind}, {level}, format {format_}")
        for value, value_label in value_labels(dictionary, name):
            print(f"    {value:>10}  {value_label}")
        missing = missing_values(dictionary, context)
        if missing:
            print(f"    missing: {', '.join(missing)}")


def main(arguments):
    if len(arguments) != 1:
        print("usage: codebook.py FILE.sav", file=sys.stderr)
        return 2
    try:
        codebook(arguments[0])
    except (OSError, transspace.ReadError) as error:
        print(f"codebook.py: {error}", file=sys.stderr)
        return 2
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
