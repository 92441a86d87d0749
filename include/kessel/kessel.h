/* The splitter for C, and for every language that can call C. */
#ifndef KESSEL_KESSEL_H
#define KESSEL_KESSEL_H

#include <stddef.h>
#include <stdint.h>

#include "kessel/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Paths and texts are UTF-8 and end in a zero byte. No exception leaves a function. Everything
   works on the caller's thread; two splits must not overlap in one process, be they started from
   here or from C++. */

/* What an assembly's file holds: Kessel::AssemblyStyle. */
enum kessel_assemblies {
  KESSEL_ASSEMBLIES_CLASSIC = 0,
  KESSEL_ASSEMBLIES_LEAN = 1,
  KESSEL_ASSEMBLIES_NESTED = 2
};

/* What files are called after: Kessel::NameStyle. */
enum kessel_names {
  KESSEL_NAMES_RECORD = 0,
  KESSEL_NAMES_PRODUCT = 1,
  KESSEL_NAMES_PRODUCT_UNICODE = 2
};

/* What is asked for besides: of which functions, and as which member of their options in C++. */
enum kessel_flags {
  KESSEL_SHRINK = 1,                /* split, join, extract: shrink */
  KESSEL_DROP_UNREACHABLE = 2,      /* shrink: drop_unreachable */
  KESSEL_RENUMBER = 4,              /* shrink: renumber */
  KESSEL_FOLLOW_REFERENCES = 8,     /* all but diff, join, shrink: follow_references */
  KESSEL_COPY_REFERENCES = 16,      /* split, extract: copy_references */
  KESSEL_FOLLOW_OUTSIDE = 32,       /* the same, and join: follow_outside */
  KESSEL_ALLOW_MISSING = 64,        /* join: allow_missing */
  KESSEL_ALLOW_MIXED_SCHEMAS = 128, /* join: allow_mixed_schemas */
  KESSEL_DRAW = 256                 /* overview: with lines, boxes and places */
};

/* How an input is cut into records: Kessel::Reading. */
enum kessel_reading {
  KESSEL_READING_STANDARD = 0,
  KESSEL_READING_CLASSIC = 1 /* with KESSEL_ASSEMBLIES_CLASSIC only */
};

/* Where a picture is seen from: Kessel::View. */
enum kessel_view {
  KESSEL_VIEW_ISOMETRIC = 0,
  KESSEL_VIEW_FRONT = 1,
  KESSEL_VIEW_TOP = 2,
  KESSEL_VIEW_RIGHT = 3
};

/* How a split ended. */
enum kessel_status {
  KESSEL_DONE = 0,
  KESSEL_NOTHING_TO_SPLIT = 1, /* the classic style, and one part or none; nothing was written */
  KESSEL_BAD_ARGUMENT = 2, /* a null path, an unknown choice or part, or a path that is not UTF-8 */
  KESSEL_INPUT_ERROR = 3,  /* the input cannot be read or split */
  KESSEL_OUTPUT_ERROR = 4, /* a file is there already, or was not written whole */
  KESSEL_OUT_OF_MEMORY = 5,
  KESSEL_CANCELLED = 6, /* the progress function returned something else than 0 */
  KESSEL_FAILED = 7     /* anything else */
};

/* What a split is busy with: Kessel::Stage. */
enum kessel_stage {
  KESSEL_READING = 0, /* done and total are bytes of the input */
  KESSEL_SORTING = 1, /* passes over the records */
  KESSEL_WRITING = 2  /* bytes of the input, which is read again */
};

/* Told how far a split has come, on the caller's thread: after each pass, and after every megabyte
   of the input. Anything but 0 ends the split with KESSEL_CANCELLED; what was written until then is
   in the files. `context` is `kessel_options.progress_context`. Must not start another split, and
   no exception may leave it. */
typedef int (*kessel_progress)(void* context, enum kessel_stage stage, uint64_t done,
                               uint64_t total);

/* Choices for one split. Fill it by kessel_default_options, then change what should be otherwise.
   Later versions may add members at the end; `size` says which of them the caller knows, the others
   keep their defaults, and members that the library does not know are ignored. */
struct kessel_options {
  size_t size;              /* of the structure as the caller knows it, bytes */
  int32_t assemblies;       /* an enum kessel_assemblies */
  int32_t names;            /* an enum kessel_names */
  uint64_t memory_limit;    /* Kessel::Options::memory_limit, bytes */
  kessel_progress progress; /* null for none */
  void* progress_context;   /* handed to `progress` as it is */
  int32_t reading;          /* an enum kessel_reading */
  uint64_t flags;           /* of enum kessel_flags, added up */
};

/* How a split ended and what it wrote. */
typedef struct kessel_result kessel_result;

/* Fills the `size` bytes at `options` with the defaults: nested, names after products, the standard
   reading, no limit, no progress function. `size` is `sizeof(struct kessel_options)` where the
   caller was compiled, and is noted in the structure. Null is fine. */
KESSEL_EXPORT void kessel_default_options(struct kessel_options* options, size_t size);

/* The same with Kessel::Options::classic(): the choices with which a split writes the bytes that
   Kessel::Run writes. */
KESSEL_EXPORT void kessel_classic_options(struct kessel_options* options, size_t size);

/* Splits the exchange file `in` (ISO 10303-21, clear text) into files under `outdir`, as
   Kessel::split does (kessel/splitter.h): "roots.txt" goes into the working directory, and
   sentences about problems in the data are printed on standard error. Where one of the files is
   there already, in whatever form, nothing is written and the split ends with KESSEL_OUTPUT_ERROR.
   `options` may be null for the defaults; nothing is kept of it, nor of the paths. Returns a result
   that the caller frees with kessel_free, whatever happened; null only when there is no memory for
   it. */
KESSEL_EXPORT kessel_result* kessel_split(const char* in, const char* outdir,
                                          const struct kessel_options* options);

/* Compares what the exchange files `a` and `b` say, as Kessel::diff does (kessel/diff.h). Of the
   options the memory limit and the progress function matter, which is told of reading both files,
   and then of comparing as KESSEL_SORTING. Writes and prints nothing. Returns a result as
   kessel_split does, without files; kessel_is_same has the answer, kessel_is_certain whether it
   is certain, kessel_difference_at the records that differ. */
KESSEL_EXPORT kessel_result* kessel_diff(const char* a, const char* b,
                                         const struct kessel_options* options);

/* Joins the exchange file `root`, or the split in the folder `root`, and those that it refers to
   into the file `out`, as Kessel::join does (kessel/join.h), which must not be there. Of the
   options the memory limit, the progress function and flags matter. Prints nothing. Returns a
   result as kessel_split does; its only file is `out`. */
KESSEL_EXPORT kessel_result* kessel_join(const char* root, const char* out,
                                         const struct kessel_options* options);

/* Writes the exchange file `in` to `out`, which must not be there, without what it says twice, as
   Kessel::shrink does (kessel/shrink.h). Of the options the memory limit, the progress function and
   the flags matter. Prints nothing. Returns a result as kessel_split does; its only file is `out`,
   and kessel_shrunk_of says how much is left. */
KESSEL_EXPORT kessel_result* kessel_shrink(const char* in, const char* out,
                                           const struct kessel_options* options);

/* What became of a file: Kessel::Shrunk. Later versions may add members at the end. */
struct kessel_shrunk {
  uint64_t records_before;
  uint64_t records_after;
  uint64_t unreachable;
  uint64_t bytes_before;
  uint64_t bytes_after;
};

/* Fills the `size` bytes at `shrunk`, `sizeof(struct kessel_shrunk)` where the caller was compiled,
   with the figures of kessel_shrink; with zeros for every other result and null. */
KESSEL_EXPORT void kessel_shrunk_of(const kessel_result* result, struct kessel_shrunk* shrunk,
                                    size_t size);

/* In which of two files a record is that the other does not have so. */
enum kessel_difference_kind {
  KESSEL_ONLY_IN_A = 0,
  KESSEL_ONLY_IN_B = 1,
  KESSEL_CHANGED = 2 /* in both, and says different things */
};

/* A record that differs. The texts live as long as the result. Later versions may add members at
   the end. */
struct kessel_difference {
  int32_t kind;             /* an enum kessel_difference_kind */
  const char* product_id;   /* of the product that it belongs to; empty for none or several */
  const char* product_name; /* likewise */
  const char* type;         /* "PRODUCT"; of complex instances the keywords with blanks between */
  uint64_t in_a;            /* instance number; 0 where A has none, and for an anchor */
  uint64_t in_b;
  const char* changes; /* a line "KEYWORD 2: from -> to" for each changed parameter; may be empty */
};

/* How many records kessel_diff found to differ, product by product as Kessel::Difference lists
   them; 0 for every other result and null. Files that differ in their schemas alone have none. */
KESSEL_EXPORT size_t kessel_difference_count(const kessel_result* result);

/* Fills the `size` bytes at `difference`, `sizeof(struct kessel_difference)` where the caller was
   compiled, with the record at `index`. Returns 1, or 0 beyond the last, where zeros are filled in.
 */
KESSEL_EXPORT int kessel_difference_at(const kessel_result* result, size_t index,
                                       struct kessel_difference* difference, size_t size);

/* Checks that the files in the folder `outdir`, of which a split has made them, hold what the
   exchange file `in` holds, as Kessel::verify does (kessel/verify.h). Of the options the memory
   limit, the flags to follow references and the progress function matter, which is told of reading
   the files, and then of comparing as KESSEL_SORTING. Writes and prints nothing. Returns a result
   as kessel_split does, without files: what is wrong, be it that a file cannot be read, is told by
   kessel_finding_at, and the status is KESSEL_DONE. */
KESSEL_EXPORT kessel_result* kessel_verify(const char* in, const char* outdir,
                                           const struct kessel_options* options);

/* How bad a finding is: Kessel::Severity. */
enum kessel_severity { KESSEL_WARNING = 0, KESSEL_ERROR = 1 };

/* What is wrong or deserves a look: Kessel::Finding. The texts live as long as the result. Later
   versions may add members at the end. */
struct kessel_finding {
  int32_t severity;     /* an enum kessel_severity */
  const char* kind;     /* "missing_record"; what hosts tell findings apart by */
  const char* file;     /* in the folder of the split or the input; "." for the folder of the split
                           itself, empty for the input */
  const char* sentence; /* in English, for people */
  uint64_t line;        /* in that file, from 1; 0 where it is about no record */
  uint64_t column;      /* in that line, in bytes from 1; 0 with it */
  uint64_t instance;    /* number of the instance; 0 for none */
  uint64_t count;       /* how many findings of this kind it stands for */
};

/* How many findings kessel_verify, kessel_check or kessel_overview has, or of how many things
   kessel_split, kessel_extract, kessel_join, kessel_shrink or kessel_picture warns that did what
   they were to do; 0 where all is as it should be, for every other result, and for null. */
KESSEL_EXPORT size_t kessel_finding_count(const kessel_result* result);

/* Fills the `size` bytes at `finding`, `sizeof(struct kessel_finding)` where the caller was
   compiled, with the finding at `index`. Returns 1, or 0 beyond the last, where zeros are filled
   in. */
KESSEL_EXPORT int kessel_finding_at(const kessel_result* result, size_t index,
                                    struct kessel_finding* finding, size_t size);

/* Writes the part or sub-assembly `part` of the exchange file `in`, with all below it, as the file
   `out`, as Kessel::extract does (kessel/extract.h), which must not be there. A name that no part
   has, or several, ends it with KESSEL_BAD_ARGUMENT and the candidates in the sentence. Of the
   options the memory limit, the progress function and flags matter. Prints nothing. Returns a
   result as kessel_split does; its files are `out` and, with KESSEL_COPY_REFERENCES, the copies. */
KESSEL_EXPORT kessel_result* kessel_extract(const char* in, const char* part, const char* out,
                                            const struct kessel_options* options);

/* Says what is wrong or unusual in the exchange file `in`, as Kessel::check does (kessel/check.h).
   Of the options the memory limit, the flags to follow references and the progress function matter.
   Writes and prints nothing. Returns a result as kessel_split does, without files: what is wrong,
   be it that the file cannot be read, is told by kessel_finding_at, and the status is KESSEL_DONE.
 */
KESSEL_EXPORT kessel_result* kessel_check(const char* in, const struct kessel_options* options);

/* Reads the exchange file `in` and keeps all that there is to tell of it, as Kessel::read_overview
   does (kessel/overview.h): with KESSEL_DRAW, lines and places, too, at the usual tolerance. Of the
   options the names and assemblies of the split that file names are for, the memory limit, the
   progress function and flags matter. Writes and prints nothing. Returns a result as kessel_split
   does, without files; the functions below have what it tells, kessel_finding_at what is wrong. */
KESSEL_EXPORT kessel_result* kessel_overview(const char* in, const struct kessel_options* options);

/* What a file says of itself, and how much is in it: Kessel::Summary and the first text of each
   list of its header. The texts live as long as the result, and are empty where the file gives
   none. Later versions may add members at the end. */
struct kessel_summary {
  uint64_t bytes;
  uint64_t records;
  uint64_t parts; /* without components */
  uint64_t assemblies;
  uint64_t assemblies_with_bodies;
  uint64_t depth;
  size_t root; /* index of the part where the structure begins; SIZE_MAX without parts */
  const char* name;
  const char* description;
  const char* time_stamp;
  const char* author;
  const char* organisation;
  const char* preprocessor_version;
  const char* originating_system;
  const char* schema;
  const char* length_unit; /* that of most contexts */
  double length_unit_metres;
  int32_t is_drawn; /* whether there are lines and places: asked for, and within the limit */
};

/* Fills the `size` bytes at `summary`, `sizeof(struct kessel_summary)` where the caller was
   compiled, with what kessel_overview read. Returns 1, or 0 for every other result and null, where
   zeros are filled in. */
KESSEL_EXPORT int kessel_summary_of(const kessel_result* result, struct kessel_summary* summary,
                                    size_t size);

/* What a part is: Kessel::PartRole. */
enum kessel_role { KESSEL_PART = 0, KESSEL_ASSEMBLY = 1, KESSEL_ASSEMBLY_WITH_BODIES = 2 };

/* A part: Kessel::PartInfo and Kessel::DrawnPart. The texts live as long as the result. Later
   versions may add members at the end. */
struct kessel_part {
  uint64_t record; /* instance number of its definition; 0 for a generated root */
  const char* id;
  const char* name;
  const char* description;
  int32_t role;     /* an enum kessel_role */
  const char* file; /* the name that a split gives its file; empty for none */
  const char*
      external_file; /* that holds its shape, as seen from the input's folder; empty for none */
  uint64_t total;    /* how often it occurs in the whole */
  size_t components; /* how many usages start from it */
  const char* unit;  /* of the lengths; empty where it is not known or nothing is drawn */
  double unit_metres;
  size_t lines;     /* its own, those of components apart */
  uint64_t dropped; /* edges that the file does not describe */
  int32_t has_box;  /* whether it, or a component of it, has lines */
  double low[3];    /* the box around it with all its components, in its coordinates and unit */
  double high[3];
};

/* How many parts kessel_overview found; 0 for every other result and null. */
KESSEL_EXPORT size_t kessel_part_count(const kessel_result* result);

/* Fills the `size` bytes at `part`, `sizeof(struct kessel_part)` where the caller was compiled,
   with the part at `index`. Returns 1, or 0 beyond the last, where zeros are filled in. */
KESSEL_EXPORT int kessel_part_at(const kessel_result* result, size_t index,
                                 struct kessel_part* part, size_t size);

/* One component of a part: Kessel::PlacedComponent. Later versions may add members at the end. */
struct kessel_component {
  size_t part;          /* index of the component */
  int32_t closes_cycle; /* whether it leads back to the part that uses it */
  /* The rest is told where the file was drawn, and zeros otherwise. */
  uint64_t usage;    /* instance number of the usage; 0 in a generated root */
  int32_t is_placed; /* whether the file says where it is */
  int32_t is_hidden; /* whether the file says that it is not to be seen here */
  double matrix[12]; /* three rows of four: to the coordinates of the part that uses it */
  int32_t colour;    /* 0xRRGGBB, or -1 for none */
};

/* Fills the `size` bytes at `component`, `sizeof(struct kessel_component)` where the caller was
   compiled, with the component at `index` of the part at `part`: one for each usage; where the file
   was not drawn, those of one component behind each other. Returns 1, or 0 beyond the last, where
   zeros are filled in. */
KESSEL_EXPORT int kessel_component_at(const kessel_result* result, size_t part, size_t index,
                                      struct kessel_component* component, size_t size);

/* An edge as straight pieces: Kessel::DrawnLine. Later versions may add members at the end. */
struct kessel_line {
  uint64_t record;      /* instance number of the edge, curve, loop or face */
  int32_t colour;       /* 0xRRGGBB, or -1 for none */
  const double* points; /* x, y, z of each, in the part's unit; live as long as the result */
  size_t count;         /* how many points; at least two */
};

/* Fills the `size` bytes at `line`, `sizeof(struct kessel_line)` where the caller was compiled,
   with the line at `index` of the part at `part`. Returns 1, or 0 beyond the last, where zeros are
   filled in. */
KESSEL_EXPORT int kessel_line_at(const kessel_result* result, size_t part, size_t index,
                                 struct kessel_line* line, size_t size);

/* Draws the part `part` of the exchange file `in`, or with null all of it, as the SVG file `out`,
   as Kessel::draw_picture does (kessel/picture.h), which must not be there. `view` is an enum
   kessel_view. A name that no part has, or several, ends it with KESSEL_BAD_ARGUMENT. Of the
   options the memory limit, the progress function and flags matter. Prints nothing. Returns a
   result as kessel_split does; its only file is `out`. */
KESSEL_EXPORT kessel_result* kessel_picture(const char* in, const char* part, int32_t view,
                                            const char* out, const struct kessel_options* options);

/* 1 where kessel_diff found that the files say the same, else 0; 0 for null, for every status but
   KESSEL_DONE, and for the result of a split. */
KESSEL_EXPORT int kessel_is_same(const kessel_result* result);

/* 1 where what kessel_is_same says is certain, as Kessel::Difference::is_certain; 0 for files so
   symmetrical all over that they count as the same, for null, for every status but KESSEL_DONE, and
   for the result of anything but a comparison. */
KESSEL_EXPORT int kessel_is_certain(const kessel_result* result);

/* How the split or comparison ended; KESSEL_OUT_OF_MEMORY for null. */
KESSEL_EXPORT enum kessel_status kessel_status_of(const kessel_result* result);

/* One sentence on what went wrong, in English; empty for KESSEL_DONE. That of a KESSEL_INPUT_ERROR
   begins with the file, line and column where they are known, "lamp.step:12:5: ". Paths in it are
   spelt as the system spells them. Never null; lives as long as the result. */
KESSEL_EXPORT const char* kessel_error_of(const kessel_result* result);

/* Which file a KESSEL_INPUT_ERROR is about, as it was given or found, UTF-8; empty for every other
   status. Never null; lives as long as the result. */
KESSEL_EXPORT const char* kessel_error_file(const kessel_result* result);

/* Where in that input: the line, from 1, and the column in it, in bytes from 1. 0 for a problem of
   the whole file, for every status but KESSEL_INPUT_ERROR, and for null. */
KESSEL_EXPORT uint64_t kessel_error_line(const kessel_result* result);
KESSEL_EXPORT uint64_t kessel_error_column(const kessel_result* result);

/* How many files were written; 0 for null and for every status but KESSEL_DONE. */
KESSEL_EXPORT size_t kessel_file_count(const kessel_result* result);

/* The path of the file at `index`, the root's first, the others by ascending record number:
   `outdir` with the file's name behind it. Null beyond the last. Lives as long as the result. */
KESSEL_EXPORT const char* kessel_file(const kessel_result* result, size_t index);

/* Frees a result; null is fine. */
KESSEL_EXPORT void kessel_free(kessel_result* result);

#ifdef __cplusplus
}
#endif

#endif
