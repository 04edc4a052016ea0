#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
# Reads a YAML file, refusing keys that come twice, and prints what it holds as JSON.
import json
import sys

import yaml


class StrictLoader(yaml.SafeLoader):
    pass


def map_without_twins(loader, node):
    keys = [loader.construct_object(key) for key, _ in node.value]
    if len(keys) != len(set(keys)):
        raise ValueError(f"a key comes twice: {keys}")
    return loader.construct_mapping(node, deep=True)


StrictLoader.add_constructor("tag:yaml.org,2002:map", map_without_twins)
with open(sys.argv[1], "rb") as file:
    record = yaml.load(file.read().decode("utf-8", "strict"), StrictLoader)
print(json.dumps(record, sort_keys=True, default=lambda time: time.isoformat()), end="")
