"""What is measured against what. Each row names a program, a group of its benchmarks ("group/variant"),
and what the one variant may cost beside the other."""

from dataclasses import dataclass


@dataclass(frozen=True)
class Row:
    what: str
    program: str
    group: str


@dataclass(frozen=True)
class Ratio(Row):
    """The time of `ours` over that of `baseline`, or the same of a counter that both report."""

    baseline: str
    says: str  # the baseline in words
    at_most: float | None = None  # ours over baseline; None where nothing is promised
    times_faster: float | None = None  # baseline over ours, at least
    ours: str = "ours"
    counter: str | None = None
    unit: str = "time"


@dataclass(frozen=True)
class Figure(Row):
    """A counter of one benchmark, held against a number."""

    counter: str
    unit: str
    at_most: float
    ours: str = "ours"


@dataclass(frozen=True)
class Growth(Row):
    """The slope of log(time) over log(size) through the variants "size"; 1 is in proportion to the size."""

    at_most: float | None = 1.1
    per_item: bool = False  # the time is that of one item, so that it is multiplied by the size


ROWS: list[Row] = [
    # ---- fonts ----
    Ratio("reading the faces of 2,000 fonts", "faces", "faces", "floor",
          "open in its folder, 512 bytes, names up to 4 KiB, close", at_most=1.25),
    Ratio("the same", "faces", "faces", "freetype", "FreeType opening each face and reading its names",
          times_faster=5),
    Ratio("the same", "faces", "faces", "fontconfig", "FcFreeTypeQueryAll", times_faster=18),
    Ratio("finding the font files of the system", "walk", "walk", "readdir",
          "one readdir pass with an extension test", at_most=1.3),
    Ratio("scanFonts(3), 2,000 fonts, warm", "scan", "scan", "floor",
          "the least of walking and of reading, as above", at_most=1.3),
    Ratio("the same, fonts' data not in memory", "scan", "coldScan", "plain",
          "the same file after file with the system's read-ahead", times_faster=1.5),
    Ratio("findIndexedFont of a bare name, 10,000 fonts", "fontindex", "findIndexed10000", "map",
          "hash map from the folded name to the path, folding included", at_most=4),
    Ratio("the same, 1,000 fonts", "fontindex", "findIndexed1000", "map", "the same", at_most=4),
    Ratio("findFile of a bare font name, 10,000 fonts", "fontindex", "findFile", "parts",
          "findIndexedFont and one test of the name as a file", at_most=1.5),
    Ratio("reading \"ttf\", 10,000 families", "fontindex", "ttf", "1000", "1,000 families", at_most=15,
          ours="10000"),
    Ratio("ttfFileNameByDescriptor, 10,000 faces, hit", "fontindex", "matchHit", "map",
          "hash map from the typeface to its faces", at_most=4),
    Ratio("the same, miss", "fontindex", "matchMiss", "map", "the same", at_most=4),
    Growth("scanning 100 to 10,000 fonts", "fontindex", "scanGrowth"),
    Growth("reading \"ttf\", 100 to 10,000 families", "fontindex", "ttf"),
    Growth("findIndexedFont, 100 to 10,000 fonts", "fontindex", "findIndexedGrowth"),
    Growth("ttfFileNameByDescriptor, 100 to 10,000 faces", "fontindex", "matchGrowth"),

    # ---- fibers, services, a whole life ----
    Ratio("handing on between two fibers, on one core", "fibers", "handoff_one_core", "threads",
          "two threads, one mutex, two conditions, on one core", at_most=1.35),
    Ratio("handing on between two fibers, wherever they run", "fibers", "handoff_anywhere", "threads",
          "two threads, one mutex, two conditions, wherever they run"),
    Ratio("creating a fiber on a free record", "fibers", "fiber_creation", "new_record",
          "the same on a new record", at_most=0.4),
    Ratio("resident memory of a parked fiber, of 10,000", "fibers", "parked", "threads",
          "a bare parked thread, of 10,000", at_most=1.3, counter="bytes", unit="bytes"),
    Growth("a round of hand-offs among 2 to 10,000 fibers", "fibers", "handoff_round"),
    Growth("the same among bare threads: what the kernel makes of so many", "fibers", "thread_round", at_most=None),
    Ratio("fetching and releasing each of 13 services, in a process of one thread", "services", "get_service",
          "map", "std::map<std::wstring> with an atomically counted pointer", at_most=0.6),
    Ratio("the same with a second thread in the process", "services", "get_service_threads", "map",
          "std::map<std::wstring> with an atomically counted pointer"),
    Ratio("an event to 10 reactors", "services", "fire_event", "copy",
          "a real copy of the array, and ten virtual calls, each on a counted pointer of its own", at_most=0.7),
    Ratio("start to the open drawing, no fonts", "life", "start", "floor",
          "an empty program with the same libraries, and dlopen of the same modules", at_most=1.5),
    Ratio("start to the open drawing, 2,000 fonts, warm", "life", "start_fonts", "floor",
          "the same, and one readdir pass, and of each font openat, one read of 512 bytes, one of the names",
          at_most=1.4),
    Ratio("vemo_exit without the flush to disk", "life", "exit", "start", "start-up", at_most=0.3),
    Ratio("vemo_exit with the flush to disk", "life", "exit_flushed", "unflushed", "without"),
    Figure("resident memory after start with 2,000 fonts, over without", "life", "font_memory", "KiB",
           "KiB a face", at_most=1.5),
    Growth("start with 1 to 100 modules", "life", "start_modules"),

    # ---- value tree ----
    Ratio("JSON file into a tree, as saved (indented), and the tree's end", "json", "readsaved", "rapidjson",
          "RapidJSON DOM, as strict, read from the file too", at_most=1.5),
    Ratio("JSON file into a tree, as saved (indented), and the tree's end", "json", "readsaved", "nlohmann",
          "nlohmann DOM", times_faster=2),
    Ratio("JSON file into a tree, as saved (indented), and the tree's end", "json", "readsaved", "qt",
          "QJsonDocument", at_most=1.0),
    Ratio("the same without white space", "json", "readcompact", "rapidjson", "RapidJSON DOM", at_most=1.5),
    Ratio("the same without white space", "json", "readcompact", "nlohmann", "nlohmann DOM", times_faster=2),
    Ratio("the same without white space", "json", "readcompact", "qt", "QJsonDocument", at_most=1.0),
    Ratio("JSON file of triples of reals, 17 digits each", "json", "readreals", "rapidjson", "RapidJSON DOM",
          at_most=1.5),
    Ratio("JSON file of long texts", "json", "readtexts", "rapidjson", "RapidJSON DOM", at_most=1.5),
    Ratio("JSON file saved safely, indented", "json", "writejson", "qt",
          "QJsonDocument and QSaveFile; both flush the file to disk, ours its folder as well", at_most=1.0),
    Ratio("JSON file saved safely, indented", "json", "writejson", "qtflushed",
          "QJsonDocument and QSaveFile, the folder flushed as well", at_most=1.0),
    Ratio("member look-up, 5 keys, with a second thread in the process", "tree", "lookup5_threads", "walk",
          "linear walk, atomically counted pointer", at_most=1.2),
    Ratio("the same in a process of one thread", "tree", "lookup5", "walk", "the same"),
    Ratio("member look-up, 5,000 keys, with a second thread in the process", "tree", "lookup5000_threads", "map",
          "hash map, atomically counted pointer", at_most=2),
    Ratio("the same in a process of one thread", "tree", "lookup5000", "map", "the same"),
    Ratio("look-up of a path of four levels", "tree", "path4", "lookups", "four member look-ups", at_most=1.5),
    Growth("reading JSON, 10 to 100,000 keys", "tree", "growthreading"),
    Growth("building an object, 10 to 100,000 keys", "tree", "growthbuilding"),
    Growth("looking up all keys in their order, 10 to 100,000", "tree", "growthlookup"),
    Growth("looking up all keys in random order, 10 to 100,000", "tree", "growthrandom"),
    Growth("the same in a hash map", "tree", "growthmap", at_most=None),

    # ---- texts ----
    Ratio("UTF-8 to wide text and back, 40 ASCII characters", "text", "utf8ascii", "codecvt",
          "std::wstring_convert, kept, results stored", at_most=0.6),
    Ratio("UTF-8 to wide text and back, 40 Chinese characters", "text", "utf8chinese", "codecvt",
          "std::wstring_convert, kept, results stored", at_most=0.6),
]
