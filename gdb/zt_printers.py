# gdb/zt_printers.py
#
# GDB pretty-printers for the zt library: the arrays, lists and queues (elements with their
# indices, length, capacity, cursor), the strings (text, length, capacity), the bit arrays, the
# byte streams (length, position, bytes) and the graph (node and arc counts, nodes, arcs).
#
# Installed next to libzt.so's entry in GDB's auto-load directory
# (<prefix>/share/gdb/auto-load/<libdir>/libzt.so.<version>-gdb.py), so GDB loads it with the
# library; a copy in <prefix>/share/zt/gdb/ can be sourced by hand (`source .../zt_printers.py`),
# for instance with the static library. `info pretty-printer` lists the printers under "zt";
# `disable pretty-printer global zt;ZtList` turns one off.
#
# Only memory is read: no function of the program is called, so the printers also work on a core
# file. Values that cannot be right (a negative length, a length past the capacity) are shown as
# "invalid" without elements, and no walk takes more steps than the container's length.

import re

import gdb
import gdb.printing

# ---- Helpers -------------------------------------------------------------------------------------


def _tag(value):
    """The class name of a value's type, typedefs removed."""
    return value.type.strip_typedefs().unqualified().tag or str(value.type)


def _object(pointer):
    """The object a pointer element names, as its dynamic class; the null pointer itself."""
    if int(pointer) == 0:
        return pointer
    target = pointer.dereference()
    try:
        return target.cast(target.dynamic_type)
    except gdb.error:
        return target


def _limit():
    """GDB's `print elements` setting, or None when unlimited."""
    limit = gdb.parameter("print elements")
    return limit if limit else None


def _count(n, noun):
    """"1 arc", "2 arcs"."""
    return "%d %s%s" % (n, noun, "" if n == 1 else "s")


def _bytes(address, count):
    """`count` bytes of the inferior from `address`."""
    if count <= 0 or int(address) == 0:
        return b""
    return bytes(gdb.selected_inferior().read_memory(int(address), count))


def _hex(data, total):
    """The bytes in hex, with "..." when `total` is more than were shown."""
    text = " ".join("%02x" % b for b in data)
    return text + (" ..." if total > len(data) else "")


def _shown(total):
    """How many of `total` items `print elements` lets through."""
    limit = _limit()
    return total if limit is None else min(total, limit)


def _walk(head, count):
    """The data of at most `count` nodes after `head` in a circular list, with their indices."""
    node = head["next"]
    i = 0
    while i < count and int(node) != 0 and node != head:
        yield i, node["data"]
        node = node["next"]
        i += 1


# ---- Printers ------------------------------------------------------------------------------------


class ArrayPrinter:
    """ZtDynArray<T> and ZtDynPArray<T> (whose elements are shown as the objects they own)."""

    def __init__(self, value, owning=False):
        self.value, self.owning = value, owning

    def _state(self):
        n, space = int(self.value["m_length"]), int(self.value["m_spaceSize"])
        return n, space, 0 <= n <= space

    def to_string(self):
        n, space, ok = self._state()
        return "%s of length %d, capacity %d, cursor %d%s" % (
            _tag(self.value), n, space, int(self.value["m_cur"]), "" if ok else " (invalid)")

    def children(self):
        n, _, ok = self._state()
        data = self.value["m_data"]
        for i in range(n if ok else 0):
            yield "[%d]" % i, _object(data[i]) if self.owning else data[i]


class FixedArrayPrinter:
    """ZtArray<T>."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return "%s of length %d" % (_tag(self.value), int(self.value["m_count"]))

    def children(self):
        data = self.value["m_data"]
        for i in range(max(int(self.value["m_count"]), 0) if int(data) else 0):
            yield "[%d]" % i, data[i]


class ListPrinter:
    """ZtList, ZtDList, ZtXList and the owning ZtPDList, ZtPXList."""

    def __init__(self, value, owning=False):
        self.value, self.owning = value, owning

    def to_string(self):
        text = "%s of length %d, cursor %d" % (
            _tag(self.value), int(self.value["m_length"]), int(self.value["m_cur"]))
        try:
            text += ", group size %d" % int(self.value["m_groupSize"])
        except gdb.error:
            pass  # not a grouped list
        return text

    def children(self):
        head = self.value["m_head"]
        if int(head) == 0:
            return
        for i, data in _walk(head, int(self.value["m_length"])):
            yield "[%d]" % i, _object(data) if self.owning else data


class QueuePrinter:
    """ZtListQuene<T> and ZtPDListQuene<T>: the list they keep, head first."""

    def __init__(self, value, owning=False):
        self.value = value
        self.list = ListPrinter(value["m_list"], owning)

    def to_string(self):
        limit = int(self.value["m_limit"])
        return "%s with %s, limit %s" % (
            _tag(self.value), _count(int(self.list.value["m_length"]), "element"),
            "none" if limit < 0 else str(limit))

    def children(self):
        return self.list.children()


class StringPrinter:
    """ZtStringA and ZtStringW: the text, its length and the buffer's capacity."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        data, n, size = self.value["m_data"], int(self.value["m_length"]), int(self.value["m_count"])
        ok = int(data) != 0 and 0 <= n < size
        unit = data.type.strip_typedefs().target().unqualified()
        text = '""' if unit.sizeof == 1 else 'L""'
        if ok and n > 0:
            text = data.dereference().cast(unit.array(n - 1)).format_string()
        elif n > 0:
            text = "<invalid>"
        return "%s (length %d, capacity %d)" % (text, n, size)


class BitArrayPrinter:
    """ZtBitArray and ZtBit2dArray: the units' values, unit 0 in the low bits of byte 0."""

    def __init__(self, value):
        self.value = value
        self.unit = int(value["m_unitSize"])
        self.count = int(value["m_unitNum"])
        try:
            self.cols = int(value["m_colNum"])
            self.rows = int(value["m_rowNum"])
        except gdb.error:
            self.cols = None

    def to_string(self):
        size = "%d x %d" % (self.rows, self.cols) if self.cols is not None else str(self.count)
        owner = "" if bool(self.value["m_own"]) else ", borrowed buffer"
        return "%s of %s units of %d bit%s%s" % (
            _tag(self.value), size, self.unit, "" if self.unit == 1 else "s", owner)

    def children(self):
        if self.unit not in (1, 2, 4) or self.count < 0:
            return
        shown = _shown(self.count)
        data = _bytes(self.value["m_data"], (shown * self.unit + 7) // 8)
        for i in range(shown if data else 0):
            bit = i * self.unit
            name = "[%d]" % i
            if self.cols:
                name = "[%d][%d]" % (i // self.cols, i % self.cols)
            yield name, (data[bit // 8] >> (bit % 8)) & ((1 << self.unit) - 1)


class StreamPrinter:
    """ZtDynArrayStream, ZtDynArrayStreamEx and ZtStream: length, position and the bytes."""

    def __init__(self, value):
        self.value = value

    def _details(self):
        """The kind's own part of the summary and the first bytes the limit lets through."""
        fields = [f.name for f in self.value.type.strip_typedefs().fields()]
        length = max(int(self.value["m_length"]), 0)
        if "m_array" in fields:  # one array
            array = self.value["m_array"]
            shown = min(_shown(length), int(array["m_length"]))
            return ", capacity %d" % int(array["m_spaceSize"]), _bytes(array["m_data"], shown)
        if "m_units" in fields:  # a chain of units of one size
            size, units = int(self.value["m_unitSize"]), self.value["m_units"]
            count = int(units["m_length"])
            data, left = b"", _shown(length)
            for k in range(count if size > 0 else 0):
                if left <= 0:
                    break
                unit = units["m_data"][k]
                if int(unit) != 0:
                    part = unit.dereference()["m_array"]
                    data += _bytes(part["m_data"], min(left, size, int(part["m_length"])))
                left -= size
            return ", unit size %d, %s" % (size, _count(count, "unit")), data
        return "", b""

    def to_string(self):
        length = int(self.value["m_length"])
        extra, data = self._details()
        text = "%s of length %d, position %d%s" % (
            _tag(self.value), length, int(self.value["m_cur"]), extra)
        return text + (": " + _hex(data, length) if data else "")


class GraphPrinter:
    """ZtGraph: the counts, then every node and every arc as its own class."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        nodes, arcs = self.value["m_nodeList"], self.value["m_arcList"]
        return "ZtGraph with %s, %s" % (_count(int(nodes["m_length"]), "node"),
                                        _count(int(arcs["m_length"]), "arc"))

    def children(self):
        for name in ("node", "arc"):
            owned = self.value["m_%sList" % name]
            if int(owned["m_head"]) == 0:
                continue
            for i, pointer in _walk(owned["m_head"], int(owned["m_length"])):
                yield "%s[%d]" % (name, i), _object(pointer)


class GraphNodePrinter:
    """ZtGraphNode: its flags and the arcs of its ring, by address."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        ring = self.value["m_arcs"]
        count = int(ring["m_length"])
        arcs = [str(p) for _, p in _walk(ring["m_head"], _shown(count))] \
            if int(ring["m_head"]) != 0 else []
        more = " ..." if count > len(arcs) else ""
        return "ZtGraphNode %s, flags 0x%x, %s%s" % (
            self.value.address, int(self.value["m_flag"]) & 0xFFFFFFFF, _count(count, "arc"),
            (": " + " ".join(arcs) + more) if arcs else "")


class GraphArcPrinter:
    """ZtGraphArc: its flags and its two ends, by address."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        ends = self.value["m_ends"]
        return "ZtGraphArc %s, flags 0x%x: %s -> %s" % (
            self.value.address, int(self.value["m_flag"]) & 0xFFFFFFFF, ends[0], ends[1])


class AbstractPrinter:
    """ZtDynArrayBase<T>, ZtQuene<T> and ZtStream seen through a base: printed as the object's
    own class when that has a printer, otherwise with the base's counters."""

    def __init__(self, value, counters):
        self.value, self.counters = value, counters
        self.inner = None
        try:
            dynamic = value.dynamic_type.strip_typedefs()
            if dynamic != value.type.strip_typedefs():
                self.inner = _lookup(value.cast(dynamic))
        except gdb.error:
            pass
        if self.inner is not None and hasattr(self.inner, "children"):
            self.children = self.inner.children

    def to_string(self):
        if self.inner is not None:
            return self.inner.to_string()
        parts = ["%s %d" % (label, int(self.value[field])) for label, field in self.counters
                 if any(f.name == field for f in self.value.type.strip_typedefs().fields())]
        return "%s%s" % (_tag(self.value), (" of " + ", ".join(parts)) if parts else "")


# ---- Lookup --------------------------------------------------------------------------------------


class _Printer(gdb.printing.SubPrettyPrinter):
    """One printer: a class name pattern and what builds the printer for a value."""

    def __init__(self, name, pattern, build):
        super().__init__(name)
        self.pattern = re.compile(pattern)
        self.build = build


class _Collection(gdb.printing.PrettyPrinter):
    """Finds the printer by the class name. A class that adds no field of its own (a client's
    `class Ids : public ZtDynArray<int> {}`, or a string class over a shared template base) is
    printed by its bases' printer."""

    def __init__(self, printers):
        super().__init__("zt", printers)

    def find(self, type_):
        type_ = type_.strip_typedefs().unqualified()
        if type_.code != gdb.TYPE_CODE_STRUCT or type_.tag is None:
            return None
        for printer in self.subprinters:
            if printer.enabled and printer.pattern.match(type_.tag):
                return printer
        fields = type_.fields()
        if fields and all(f.is_base_class for f in fields):
            for base in fields:
                printer = self.find(base.type)
                if printer is not None:
                    return printer
        return None

    def __call__(self, value):
        if not self.enabled:
            return None
        printer = self.find(value.type)
        return printer.build(value) if printer is not None else None


_SEQUENCE = (("length", "m_length"), ("cursor", "m_cur"))
_STREAM = (("length", "m_length"), ("position", "m_cur"))

_PRINTERS = _Collection([
    _Printer("ZtDynArray", r"^ZtDynArray<.*>$", ArrayPrinter),
    _Printer("ZtDynPArray", r"^ZtDynPArray<.*>$", lambda v: ArrayPrinter(v, owning=True)),
    _Printer("ZtArray", r"^ZtArray<.*>$", FixedArrayPrinter),
    _Printer("ZtList", r"^Zt[DX]?List<.*>$", ListPrinter),
    _Printer("ZtPDList", r"^ZtP[DX]List<.*>$", lambda v: ListPrinter(v, owning=True)),
    _Printer("ZtListQuene", r"^ZtListQuene<.*>$", QueuePrinter),
    _Printer("ZtPDListQuene", r"^ZtPDListQuene<.*>$", lambda v: QueuePrinter(v, owning=True)),
    # The strings: the classes ZtStringA/ZtStringW, or the template (or internal template base)
    # they are made of.
    _Printer("ZtString",
             r"^(ZtString[AW]|ZtString\w*<(char|wchar_t)>|zt::detail::\w*String\w*<(char|wchar_t)>)$",
             StringPrinter),
    _Printer("ZtBitArray", r"^ZtBit(2d)?Array$", BitArrayPrinter),
    _Printer("ZtDynArrayStream", r"^ZtDynArrayStream(Ex)?$", StreamPrinter),
    _Printer("ZtGraph", r"^ZtGraph$", GraphPrinter),
    _Printer("ZtGraphNode", r"^ZtGraphNode$", GraphNodePrinter),
    _Printer("ZtGraphArc", r"^ZtGraphArc$", GraphArcPrinter),
    _Printer("ZtDynArrayBase", r"^ZtDynArrayBase<.*>$", lambda v: AbstractPrinter(v, _SEQUENCE)),
    _Printer("ZtQuene", r"^ZtQuene<.*>$", lambda v: AbstractPrinter(v, ())),
    _Printer("ZtStream", r"^ZtStream$", lambda v: AbstractPrinter(v, _STREAM)),
])


def _lookup(value):
    return _PRINTERS(value)


# Loading the script again (a second program, `source` after the auto-load) replaces the printers.
gdb.printing.register_pretty_printer(None, _PRINTERS, replace=True)
