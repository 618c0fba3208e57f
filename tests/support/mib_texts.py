#!/usr/bin/env python3
"""Writes the standard MIBs as one text for net-snmp's commands: mib_texts.py TOOLS FILE

TOOLS is the directory into which scripts/unpack unpacked the tools "snmp". Debian has these MIBs only as modules of Python, but
snmptable finds the columns of a table in a text. The text has names, indexes, types, display hints and enumerations.
"""
import sys

MODULES = ("SNMPv2-MIB", "IF-MIB", "IP-MIB", "TCP-MIB", "UDP-MIB", "HOST-RESOURCES-MIB",
           "HOST-RESOURCES-TYPES", "ENTITY-MIB")
ROOT = (1,)  # net-snmp has it
MIB_2 = (1, 3, 6, 1, 2, 1)
BASE_TYPES = {
    "Integer32": "INTEGER", "OctetString": "OCTET STRING", "ObjectIdentifier": "OBJECT IDENTIFIER", "Bits": "OCTET STRING",
    "IpAddress": "IpAddress", "Counter32": "Counter32", "Counter64": "Counter64", "Gauge32": "Gauge32",
    "Unsigned32": "Gauge32", "TimeTicks": "TimeTicks"}


def load(tools):
    """Returns all symbols of the modules, and of those that they import, by object identifier."""
    packages = tools + "/usr/lib/python3/dist-packages"
    sys.path.insert(0, packages)
    from pysnmp.smi import builder
    mibs = builder.MibBuilder()
    mibs.addMibSources(builder.DirMibSource(packages + "/pysnmp_mibs"))
    mibs.loadModules(*MODULES)
    return {symbol.name: (name, symbol)
            for module in mibs.mibSymbols.values() for name, symbol in module.items()
            if isinstance(getattr(symbol, "name", None), tuple)}


def type_text(syntax, conventions):
    """Returns the type of a syntax, and adds the textual convention that has its display hint."""
    ancestors = [kind.__name__ for kind in type(syntax).__mro__]
    base = next(BASE_TYPES[name] for name in ancestors if name in BASE_TYPES)
    values = getattr(syntax, "namedValues", None)
    if base == "INTEGER" and values:
        return "INTEGER { " + ", ".join(f"{name}({value})" for name, value in values.items()) + " }"
    hint = getattr(syntax, "displayHint", "")
    if not hint:
        return base
    convention = next(name for name in ancestors if name[0].isupper() and name != "TextualConvention")
    conventions[convention] = (hint, base)
    return convention


def object_text(name, symbol, parent, conventions):
    """Returns the definition of an object below its parent."""
    kind = type(symbol).__name__
    position = f"::= {{ {parent} {symbol.name[-1]} }}"
    if kind in ("MibScalar", "MibTableColumn"):
        syntax = type_text(symbol.syntax, conventions)
        # All that net-snmp's commands distinguish: snmptable leaves columns out that are not accessible.
        access = "not-accessible" if symbol.maxAccess in ("noaccess", "notaccessible", "not-accessible") else "read-only"
    elif kind in ("MibTable", "MibTableRow"):
        entry = name[0].upper() + name[1:]
        syntax, access = ("SEQUENCE OF Entry" if kind == "MibTable" else entry), "not-accessible"
    else:
        return f"{name} OBJECT IDENTIFIER {position}".replace("_", "-")  # Python names have no "-"
    index = ""
    if kind == "MibTableRow":
        index = "INDEX { " + ", ".join(("IMPLIED " if implied else "") + column
                                       for implied, _, column in symbol.getIndexNames()) + " } "
    return f'{name} OBJECT-TYPE SYNTAX {syntax} MAX-ACCESS {access} STATUS current DESCRIPTION "" {index}{position}'


def main():
    symbols = load(sys.argv[1])
    conventions = {}
    objects = []
    for oid in sorted(symbols):
        name, symbol = symbols[oid]
        if oid == ROOT or oid[:len(MIB_2)] != MIB_2[:len(oid)]:
            continue
        parent = symbols[oid[:-1]][0] if oid[:-1] in symbols else " ".join(map(str, oid[:-1]))
        objects.append(object_text(name, symbol, parent, conventions))
    with open(sys.argv[2], "w", encoding="ascii") as text:
        print("STANDARD-MIBS DEFINITIONS ::= BEGIN", file=text)
        for name, (hint, base) in conventions.items():
            print(f'{name} ::= TEXTUAL-CONVENTION DISPLAY-HINT "{hint}" STATUS current DESCRIPTION "" SYNTAX {base}', file=text)
        print(*objects, "END", sep="\n", file=text)


main()
