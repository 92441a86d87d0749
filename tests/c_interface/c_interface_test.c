/* A host in C: c_interface_test CASE runs one case in a folder of its own. */
#include <ftw.h>
#include <kessel/kessel.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

static int failures = 0;

#define EXPECT(condition)                                             \
  do {                                                                \
    if (!(condition)) {                                               \
      fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #condition); \
      ++failures;                                                     \
    }                                                                 \
  } while (0)

static void expect_text(const char* text, const char* expected, int line) {
  if (text != NULL && strcmp(text, expected) == 0) return;
  fprintf(stderr, "%s:%d: \"%s\", expected \"%s\"\n", __FILE__, line, text == NULL ? "null" : text,
          expected);
  ++failures;
}
#define EXPECT_TEXT(text, expected) expect_text(text, expected, __LINE__)

static void write_file(const char* path, const char* records) {
  FILE* file = fopen(path, "w");
  if (file == NULL) abort();
  fprintf(file,
          "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
          "FILE_NAME('','',(''),(''),'','','');\nFILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\n"
          "DATA;\n%sENDSEC;\nEND-ISO-10303-21;\n",
          records);
  if (fclose(file) != 0) abort();
}

static struct kessel_options default_options(void) {
  struct kessel_options options;
  kessel_default_options(&options, sizeof options);
  return options;
}

/* Splits the assembly, and expects these three files. */
static void expect_files(const struct kessel_options* options, const char* first,
                         const char* second, const char* third, int line) {
  kessel_result* result = kessel_split(ASSEMBLY, "out", options);
  const char* expected[] = {first, second, third};
  size_t i;
  EXPECT(kessel_status_of(result) == KESSEL_DONE);
  EXPECT_TEXT(kessel_error_of(result), "");
  EXPECT(kessel_file_count(result) == 3);
  for (i = 0; i < 3; ++i) {
    expect_text(kessel_file(result, i), expected[i], line);
    EXPECT(access(expected[i], R_OK) == 0);
  }
  EXPECT(kessel_file(result, 3) == NULL);
  EXPECT(kessel_file(result, SIZE_MAX) == NULL);
  kessel_free(result);
}
#define EXPECT_FILES(options, first, second, third) \
  expect_files(options, first, second, third, __LINE__)

/* Splits, and expects that this goes wrong in this way. */
static void expect_failure(const char* in, const char* outdir, const struct kessel_options* options,
                           enum kessel_status status, const char* error, int line) {
  kessel_result* result = kessel_split(in, outdir, options);
  if (kessel_status_of(result) != status) {
    fprintf(stderr, "%s:%d: status %d\n", __FILE__, line, (int)kessel_status_of(result));
    ++failures;
  }
  expect_text(kessel_error_of(result), error, line);
  EXPECT_TEXT(kessel_error_file(result), status == KESSEL_INPUT_ERROR ? in : "");
  EXPECT(kessel_file_count(result) == 0);
  EXPECT(kessel_file(result, 0) == NULL);
  kessel_free(result);
}
#define EXPECT_FAILURE(in, outdir, options, status, error) \
  expect_failure(in, outdir, options, status, error, __LINE__)

static void defaults(void) {
  struct kessel_options options = default_options();
  EXPECT(options.size == sizeof options);
  EXPECT(options.assemblies == KESSEL_ASSEMBLIES_NESTED);
  EXPECT(options.names == KESSEL_NAMES_PRODUCT);
  EXPECT(options.memory_limit == UINT64_MAX);
  EXPECT(options.progress == NULL);
  EXPECT(options.progress_context == NULL);
  EXPECT(options.reading == KESSEL_READING_STANDARD);
  EXPECT_FILES(NULL, "out/joint.stp", "out/bolt.stp", "out/nut.stp");
}

/* Whether the beginning of a file has a text. */
static int file_has(const char* path, const char* text) {
  char begin[8192];
  size_t size = 0;
  FILE* file = fopen(path, "r");
  if (file == NULL) abort();
  size = fread(begin, 1, sizeof begin - 1, file);
  begin[size] = '\0';
  fclose(file);
  return strstr(begin, text) != NULL;
}

/* What hosts of Kessel::Run get: its names, its folder in the headers, no marks. */
static void classic_options(void) {
  struct kessel_options options;
  kessel_classic_options(&options, sizeof options);
  EXPECT(options.size == sizeof options);
  EXPECT(options.assemblies == KESSEL_ASSEMBLIES_CLASSIC);
  EXPECT(options.names == KESSEL_NAMES_RECORD);
  EXPECT(options.reading == KESSEL_READING_CLASSIC);
  EXPECT(options.memory_limit == UINT64_MAX);
  EXPECT(options.progress == NULL);
  EXPECT_FILES(&options, "out/#21_part.stp", "out/#1_part.stp", "out/#11_part.stp");
  EXPECT(file_has("out/#1_part.stp", "FILE_NAME('out/#1_part.stp',"));
  EXPECT(file_has("out/#1_part.stp", "DATA;\n#3=PRODUCT("));
}

static void choices(void) {
  struct kessel_options options = default_options();
  options.names = KESSEL_NAMES_RECORD;
  EXPECT_FILES(&options, "out/#21_part.stp", "out/#1_part.stp", "out/#11_part.stp");
  EXPECT(remove("out/velkstep-split.json") == 0);
  options.names = KESSEL_NAMES_PRODUCT;
  options.assemblies = KESSEL_ASSEMBLIES_LEAN;
  EXPECT_FILES(&options, "out/joint.stp", "out/bolt.stp", "out/nut.stp");
  /* To the classic reading, a ";" ends a record wherever it stands. */
  write_file("semicolon.stp",
             "#1=PRODUCT('a;b','','',());\n#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
             "#3=PRODUCT_DEFINITION('','',#2,$);\n#4=PRODUCT('b','','',());\n"
             "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n#6=PRODUCT_DEFINITION('','',#5,$);\n"
             "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#3,#6,$);\n");
  options.assemblies = KESSEL_ASSEMBLIES_CLASSIC;
  kessel_free(kessel_split("semicolon.stp", "whole", &options));
  options.reading = KESSEL_READING_CLASSIC;
  kessel_free(kessel_split("semicolon.stp", "cut", &options));
  EXPECT(file_has("whole/a_b.stp", "PRODUCT('a;b','','',())"));
  EXPECT(!file_has("cut/b.stp", "PRODUCT('a;b','','',())"));
  options = default_options();

  write_file("umlaut.stp",
             "#1=PRODUCT('T\\X2\\00FC\\X0\\r','','',());\n"
             "#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n#3=PRODUCT_DEFINITION('','',#2,$);\n"
             "#4=PRODUCT('b','b','',());\n#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n"
             "#6=PRODUCT_DEFINITION('','',#5,$);\n"
             "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#3,#6,$);\n");
  options.names = KESSEL_NAMES_PRODUCT_UNICODE;
  {
    kessel_result* result = kessel_split("umlaut.stp",
                                         "Gr\xC3\xBC\xC3\x9F"
                                         "e",
                                         &options);
    EXPECT(kessel_status_of(result) == KESSEL_DONE);
    EXPECT_TEXT(kessel_file(result, 0),
                "Gr\xC3\xBC\xC3\x9F"
                "e/T\xC3\xBCr.stp");
    EXPECT(access("Gr\xC3\xBC\xC3\x9F"
                  "e/T\xC3\xBCr.stp",
                  R_OK) == 0);
    kessel_free(result);
  }

  /* The lid's solid hangs on its shape by a relationship: a classic root repeats it. */
  write_file("solid.stp",
             "#1=PRODUCT('box','box','',());\n#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
             "#3=PRODUCT_DEFINITION('d','',#2,$);\n#4=PRODUCT('lid','lid','',());\n"
             "#5=PRODUCT_DEFINITION_FORMATION('','',#4);\n#6=PRODUCT_DEFINITION('d','',#5,$);\n"
             "#7=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#3,#6,$);\n"
             "#8=PRODUCT_DEFINITION_SHAPE('','',#6);\n"
             "#9=SHAPE_DEFINITION_REPRESENTATION(#8,#10);\n"
             "#10=SHAPE_REPRESENTATION('lid',(#14),#12);\n"
             "#11=MANIFOLD_SOLID_BREP('',$);\n"
             "#12=GEOMETRIC_REPRESENTATION_CONTEXT('id','3D',3);\n"
             "#13=ADVANCED_BREP_SHAPE_REPRESENTATION('lid',(#11),#12);\n"
             "#14=AXIS2_PLACEMENT_3D('',$,$,$);\n"
             "#15=SHAPE_REPRESENTATION_RELATIONSHIP('','',#10,#13);\n");
  kessel_classic_options(&options, sizeof options);
  kessel_free(kessel_split("solid.stp", "classic", &options));
  options = default_options();
  options.names = KESSEL_NAMES_RECORD;
  options.assemblies = KESSEL_ASSEMBLIES_LEAN;
  kessel_free(kessel_split("solid.stp", "lean", &options));
  EXPECT(file_has("classic/#1_part.stp", "MANIFOLD_SOLID_BREP"));
  EXPECT(!file_has("lean/#1_part.stp", "MANIFOLD_SOLID_BREP"));
}

static void nothing_to_split(void) {
  struct kessel_options options;
  write_file("one.stp",
             "#1=PRODUCT('lid','lid','',());\n#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
             "#3=PRODUCT_DEFINITION('d','',#2,$);\n");
  kessel_classic_options(&options, sizeof options);
  EXPECT_FAILURE("one.stp", "out", &options, KESSEL_NOTHING_TO_SPLIT, "There is nothing to split.");
  EXPECT(access("out/#1_part.stp", F_OK) != 0);
}

/* What hosts are told is nothing to split is copied by default. */
static void one_part(void) {
  kessel_result* result;
  write_file("one.stp",
             "#1=PRODUCT('lid','lid','',());\n#2=PRODUCT_DEFINITION_FORMATION('','',#1);\n"
             "#3=PRODUCT_DEFINITION('d','',#2,$);\n#4=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
             "#5=SHAPE_DEFINITION_REPRESENTATION(#4,#6);\n#6=SHAPE_REPRESENTATION('',(),$);\n");
  result = kessel_split("one.stp", "out", NULL);
  EXPECT(kessel_status_of(result) == KESSEL_DONE);
  EXPECT(kessel_file_count(result) == 1);
  EXPECT_TEXT(kessel_file(result, 0), "out/lid.stp");
  kessel_free(result);
  EXPECT(file_has("out/lid.stp", "DATA;\n#1=PRODUCT('lid','lid','',());\n"));
  EXPECT(file_has("out/velkstep-split.json", "\"root\": \"lid.stp\""));

  /* A split is joined by its folder. */
  result = kessel_join("out", "whole.stp", NULL);
  EXPECT(kessel_status_of(result) == KESSEL_DONE);
  kessel_free(result);
  result = kessel_diff("one.stp", "whole.stp", NULL);
  EXPECT(kessel_is_same(result));
  kessel_free(result);
}

static void bad_arguments(void) {
  struct kessel_options options = default_options();
  EXPECT_FAILURE(NULL, "out", &options, KESSEL_BAD_ARGUMENT, "The path of the input is missing.");
  EXPECT_FAILURE(ASSEMBLY, NULL, NULL, KESSEL_BAD_ARGUMENT, "The path of the output is missing.");
  EXPECT_FAILURE("\xFF", "out", NULL, KESSEL_BAD_ARGUMENT, "A path is not UTF-8.");
  EXPECT_FAILURE(ASSEMBLY, "\xFF", NULL, KESSEL_BAD_ARGUMENT, "A path is not UTF-8.");
  options.assemblies = 3;
  EXPECT_FAILURE(ASSEMBLY, "out", &options, KESSEL_BAD_ARGUMENT,
                 "There is no such style of assemblies.");
  options.assemblies = -1;
  EXPECT_FAILURE(ASSEMBLY, "out", &options, KESSEL_BAD_ARGUMENT,
                 "There is no such style of assemblies.");
  options = default_options();
  options.names = 3;
  EXPECT_FAILURE(ASSEMBLY, "out", &options, KESSEL_BAD_ARGUMENT,
                 "There is no such style of names.");
  options.names = -1;
  EXPECT_FAILURE(ASSEMBLY, "out", &options, KESSEL_BAD_ARGUMENT,
                 "There is no such style of names.");
  options = default_options();
  options.assemblies = KESSEL_ASSEMBLIES_CLASSIC;
  options.reading = 2;
  EXPECT_FAILURE(ASSEMBLY, "out", &options, KESSEL_BAD_ARGUMENT, "There is no such reading.");
  options.reading = -1;
  EXPECT_FAILURE(ASSEMBLY, "out", &options, KESSEL_BAD_ARGUMENT, "There is no such reading.");
  options.assemblies = KESSEL_ASSEMBLIES_NESTED;
  options.reading = KESSEL_READING_CLASSIC;
  EXPECT_FAILURE(ASSEMBLY, "out", &options, KESSEL_BAD_ARGUMENT,
                 "The classic reading is for the classic style of assemblies only.");
  options = default_options();
  options.size = 0;
  EXPECT_FAILURE(ASSEMBLY, "out", &options, KESSEL_BAD_ARGUMENT, "The options' size is not set.");
  EXPECT(access("out", F_OK) != 0);
}

static void input_errors(void) {
  struct kessel_options options = default_options();
  FILE* empty = fopen("empty.stp", "w");
  if (empty == NULL || fclose(empty) != 0) abort();
  EXPECT_FAILURE("missing.stp", "out", NULL, KESSEL_INPUT_ERROR,
                 "missing.stp: The file cannot be opened: No such file or directory.");
  EXPECT_FAILURE("empty.stp", "out", NULL, KESSEL_INPUT_ERROR, "empty.stp: The file is empty.");
  options.memory_limit = 1;
  EXPECT_FAILURE(ASSEMBLY, "out", &options, KESSEL_INPUT_ERROR,
                 ASSEMBLY ": The records need at least 722 bytes of memory, and the limit is 1.");
  EXPECT(access("out", F_OK) != 0);
}

static void output_errors(void) {
  EXPECT_FILES(NULL, "out/joint.stp", "out/bolt.stp", "out/nut.stp");
  EXPECT_FAILURE(ASSEMBLY, "out", NULL, KESSEL_OUTPUT_ERROR,
                 "out/joint.stp: cannot be written: File exists");
  EXPECT(mkdir("other", 0777) == 0);
  EXPECT(mkdir("other/nut.stp", 0777) == 0);
  EXPECT_FAILURE(ASSEMBLY, "other", NULL, KESSEL_OUTPUT_ERROR,
                 "other/nut.stp: cannot be written: Is a directory");
  write_file("plain", "");
  EXPECT_FAILURE(ASSEMBLY, "plain/out", NULL, KESSEL_OUTPUT_ERROR,
                 "plain/out: cannot be written: Not a directory");
}

/* What a progress function was told. */
struct told {
  int calls;
  int stages_in_order;
  int never_beyond_total;
  enum kessel_stage last;
  enum kessel_stage cancel_at; /* beyond KESSEL_WRITING for never */
};

static int note(void* context, enum kessel_stage stage, uint64_t done, uint64_t total) {
  struct told* told = context;
  if (told->calls > 0 && stage < told->last) told->stages_in_order = 0;
  if (done > total) told->never_beyond_total = 0;
  told->last = stage;
  ++told->calls;
  return stage == told->cancel_at;
}

static struct told nothing_told(int cancel_at) {
  struct told told = {0, 1, 1, KESSEL_READING, KESSEL_READING};
  told.cancel_at = (enum kessel_stage)cancel_at;
  return told;
}

static void progress(void) {
  struct kessel_options options = default_options();
  struct told told = nothing_told(KESSEL_WRITING + 1);
  options.progress = note;
  options.progress_context = &told;
  EXPECT_FILES(&options, "out/joint.stp", "out/bolt.stp", "out/nut.stp");
  EXPECT(told.calls > 3);
  EXPECT(told.stages_in_order);
  EXPECT(told.never_beyond_total);
  EXPECT(told.last == KESSEL_WRITING);
}

static void cancelling(void) {
  struct kessel_options options = default_options();
  struct told told = nothing_told(KESSEL_SORTING);
  options.progress = note;
  options.progress_context = &told;
  EXPECT_FAILURE(ASSEMBLY, "out", &options, KESSEL_CANCELLED, "The split was cancelled.");
  EXPECT(told.last == KESSEL_SORTING);

  /* The next split begins anew. */
  EXPECT_FILES(NULL, "out/joint.stp", "out/bolt.stp", "out/nut.stp");
}

/* A caller that knows less than the library: what it does not know is neither read nor written. */
static void older_options(void) {
  struct kessel_options options;
  const size_t size = offsetof(struct kessel_options, memory_limit);
  memset(&options, 0xAA, sizeof options);
  kessel_default_options(&options, size);
  EXPECT(options.size == size);
  EXPECT(options.names == KESSEL_NAMES_PRODUCT);
  EXPECT(options.memory_limit == UINT64_C(0xAAAAAAAAAAAAAAAA));
  options.memory_limit = 1;
  options.names = KESSEL_NAMES_RECORD;
  EXPECT_FILES(&options, "out/#21_part.stp", "out/#1_part.stp", "out/#11_part.stp");
}

/* A caller that knows more. */
static void newer_options(void) {
  struct {
    struct kessel_options known;
    uint64_t more;
  } options;
  memset(&options, 0xAA, sizeof options);
  kessel_default_options(&options.known, sizeof options);
  EXPECT(options.known.size == sizeof options);
  EXPECT(options.more == 0);
  options.more = 7;
  options.known.names = KESSEL_NAMES_RECORD;
  EXPECT_FILES(&options.known, "out/#21_part.stp", "out/#1_part.stp", "out/#11_part.stp");
}

/* Compares, expects how that ended, and returns the answer. */
static int compared(const char* a, const char* b, const struct kessel_options* options,
                    enum kessel_status status, const char* error) {
  kessel_result* result = kessel_diff(a, b, options);
  const int is_same = kessel_is_same(result);
  EXPECT(kessel_status_of(result) == status);
  EXPECT_TEXT(kessel_error_of(result), error);
  EXPECT(kessel_file_count(result) == 0);
  EXPECT(kessel_is_certain(result) == (status == KESSEL_DONE));
  kessel_free(result);
  return is_same;
}

static int cancel(void* context, enum kessel_stage stage, uint64_t done, uint64_t total) {
  (void)context;
  (void)done;
  (void)total;
  return stage == KESSEL_SORTING;
}

static int cancel_at_once(void* context, enum kessel_stage stage, uint64_t done, uint64_t total) {
  (void)context;
  (void)stage;
  (void)done;
  (void)total;
  return 1;
}

static void expect_place_of_error(void) {
  kessel_result* result;
  write_file("cut.stp", "  #1=A('\n");
  result = kessel_diff(ASSEMBLY, "cut.stp", NULL);
  EXPECT(kessel_status_of(result) == KESSEL_INPUT_ERROR);
  EXPECT_TEXT(kessel_error_file(result), "cut.stp");
  EXPECT(kessel_error_line(result) == 8);
  EXPECT(kessel_error_column(result) == 3);
  kessel_free(result);
  EXPECT_TEXT(kessel_error_file(NULL), "");
  EXPECT(kessel_error_line(NULL) == 0);
  EXPECT(kessel_error_column(NULL) == 0);
}

/* A ladder of gadgets, and one with a twist: tests/sameness/symmetrical_records.h. */
static void write_ladder(const char* path, int is_twisted) {
  enum { GADGETS = 60 };
  static char text[1 << 16];
  size_t size = 0;
  int next = GADGETS * 6 + 1;
  int gadget, i;
  for (i = 1; i <= GADGETS * 6; ++i) {
    size += (size_t)snprintf(text + size, sizeof text - size, "#%d=VERTEX_POINT('',$);\n", i);
  }
  for (gadget = 0; gadget < GADGETS; ++gadget) {
    const int own = 1 + gadget * 6;
    const int other = 1 + (gadget + 1) % GADGETS * 6;
    for (i = 0; i < 4; ++i) {
      size +=
          (size_t)snprintf(text + size, sizeof text - size, "#%d=GADGET(#%d,#%d,#%d);\n", next++,
                           own + (i & 1), own + 2 + (i >> 1), own + 4 + ((i & 1) ^ (i >> 1)));
    }
    for (i = 0; i < 2; ++i) {
      const int crossed = is_twisted && gadget == 0 ? 1 - i : i;
      size += (size_t)snprintf(text + size, sizeof text - size, "#%d=EDGE(#%d,#%d);\n", next++,
                               own + i, other + 2 + crossed);
      if (gadget >= GADGETS / 2) continue;
      size += (size_t)snprintf(text + size, sizeof text - size, "#%d=EDGE(#%d,#%d);\n", next++,
                               own + 4 + i, own + GADGETS / 2 * 6 + 4 + i);
    }
  }
  write_file(path, text);
}

static void expect_uncertain(void) {
  kessel_result* result;
  write_ladder("ladder.stp", 0);
  write_ladder("twisted.stp", 1);
  result = kessel_diff("ladder.stp", "twisted.stp", NULL);
  EXPECT(kessel_status_of(result) == KESSEL_DONE);
  EXPECT(kessel_is_same(result) == 1);
  EXPECT(kessel_is_certain(result) == 0);
  kessel_free(result);
}

static void comparing(void) {
  struct kessel_options options;
  write_file("other.stp", "#1=A();\n");
  EXPECT(compared(ASSEMBLY, ASSEMBLY, NULL, KESSEL_DONE, "") == 1);
  EXPECT(compared(ASSEMBLY, "other.stp", NULL, KESSEL_DONE, "") == 0);
  EXPECT(compared(ASSEMBLY, NULL, NULL, KESSEL_BAD_ARGUMENT,
                  "The path of the second input is missing.") == 0);
  expect_place_of_error();
  EXPECT(compared("missing.stp", ASSEMBLY, NULL, KESSEL_INPUT_ERROR,
                  "missing.stp: The file cannot be opened: No such file or directory.") == 0);
  kessel_default_options(&options, sizeof options);
  options.progress = cancel;
  EXPECT(compared(ASSEMBLY, ASSEMBLY, &options, KESSEL_CANCELLED,
                  "The comparison was cancelled.") == 0);
  EXPECT(kessel_is_same(NULL) == 0);
  EXPECT(kessel_is_certain(NULL) == 0);
  expect_uncertain();
}

/* Joins into "one.stp" and expects how that ended, and which files there are. */
static void expect_joined(const char* root, const struct kessel_options* options,
                          enum kessel_status status, const char* error, size_t files) {
  kessel_result* result = kessel_join(root, "one.stp", options);
  EXPECT(kessel_status_of(result) == status);
  EXPECT_TEXT(kessel_error_of(result), error);
  EXPECT(kessel_file_count(result) == files);
  EXPECT(kessel_is_same(result) == 0);
  if (files == 1) EXPECT_TEXT(kessel_file(result, 0), "one.stp");
  kessel_free(result);
}

static void joining(void) {
  struct kessel_options options;
  write_file("alone.stp", "#7=A();\n");
  write_file("root.stp",
             "#1=PRODUCT_DEFINITION('','',$,$);\n#2=DOCUMENT_FILE('part.stp','','',$,'',$);\n"
             "#3=APPLIED_DOCUMENT_REFERENCE(#2,'',(#1));\n");
  kessel_default_options(&options, sizeof options);
  options.progress = cancel_at_once;
  expect_joined("alone.stp", &options, KESSEL_CANCELLED, "The joining was cancelled.", 0);
  expect_joined("root.stp", NULL, KESSEL_INPUT_ERROR,
                "root.stp: Files that are referred to are missing: \"part.stp\".", 0);
  expect_joined(NULL, NULL, KESSEL_BAD_ARGUMENT, "The path of the input is missing.", 0);
  expect_joined("alone.stp", NULL, KESSEL_DONE, "", 1);
  expect_joined("alone.stp", NULL, KESSEL_OUTPUT_ERROR, "one.stp: cannot be written: File exists",
                0);
  EXPECT(compared("alone.stp", "one.stp", NULL, KESSEL_DONE, "") == 1);
}

/* What differs between two small files, and as which rows. */
static void differences(void) {
  struct kessel_difference row;
  kessel_result* result;
  write_file("a.stp", "#1=A('x',#2);\n#2=B();\n#3=C();\n");
  write_file("b.stp", "#1=A('y',#2);\n#2=B();\n#4=D();\n");
  result = kessel_diff("a.stp", "b.stp", NULL);
  EXPECT(kessel_difference_count(result) == 3);
  EXPECT(kessel_difference_at(result, 0, &row, sizeof row) == 1);
  EXPECT(row.kind == KESSEL_CHANGED && row.in_a == 1 && row.in_b == 1);
  EXPECT_TEXT(row.type, "A");
  EXPECT_TEXT(row.product_id, "");
  EXPECT_TEXT(row.changes, "A 1: 'x' -> 'y'\n");
  EXPECT(kessel_difference_at(result, 1, &row, sizeof row) == 1);
  EXPECT(row.kind == KESSEL_ONLY_IN_A && row.in_a == 3 && row.in_b == 0);
  EXPECT_TEXT(row.type, "C");
  EXPECT_TEXT(row.changes, "");
  EXPECT(kessel_difference_at(result, 2, &row, sizeof row) == 1);
  EXPECT(row.kind == KESSEL_ONLY_IN_B && row.in_a == 0 && row.in_b == 4);
  EXPECT(kessel_difference_at(result, 3, &row, sizeof row) == 0);
  EXPECT(row.type == NULL && row.in_b == 0);
  EXPECT(kessel_difference_at(result, 0, NULL, sizeof row) == 1);
  kessel_free(result);
  result = kessel_diff(ASSEMBLY, "a.stp", NULL);
  EXPECT(kessel_difference_count(result) > 3);
  EXPECT(kessel_difference_at(result, 0, &row, sizeof row) == 1);
  EXPECT(row.product_name[0] != 0);
  kessel_free(result);
  EXPECT(kessel_difference_count(NULL) == 0);
  EXPECT(kessel_difference_at(NULL, 0, &row, sizeof row) == 0);
}

/* What is wrong with a split, and as which rows. */
static void verification(void) {
  struct kessel_finding row;
  struct kessel_options options;
  kessel_result* result = kessel_split(ASSEMBLY, "parts", NULL);
  EXPECT(kessel_status_of(result) == KESSEL_DONE);
  kessel_free(result);
  result = kessel_verify(ASSEMBLY, "parts", NULL);
  EXPECT(kessel_status_of(result) == KESSEL_DONE);
  EXPECT(kessel_finding_count(result) == 0);
  EXPECT(kessel_file_count(result) == 0);
  kessel_free(result);
  write_file("parts/more.stp", "#1=A();\n");
  result = kessel_verify(ASSEMBLY, "parts", NULL);
  EXPECT(kessel_finding_count(result) == 1);
  EXPECT(kessel_finding_at(result, 0, &row, sizeof row) == 1);
  EXPECT(row.severity == KESSEL_WARNING && row.line == 0 && row.column == 0);
  EXPECT(row.instance == 0 && row.count == 1);
  EXPECT_TEXT(row.kind, "foreign_file");
  EXPECT_TEXT(row.file, "more.stp");
  EXPECT_TEXT(row.sentence, "The file does not belong to the split: no other refers to it.");
  EXPECT(kessel_finding_at(result, 1, &row, sizeof row) == 0);
  EXPECT(row.kind == NULL && row.count == 0);
  EXPECT(kessel_finding_at(result, 0, NULL, sizeof row) == 1);
  kessel_free(result);
  result = kessel_verify("missing.stp", "parts", NULL);
  EXPECT(kessel_status_of(result) == KESSEL_DONE);
  EXPECT(kessel_finding_count(result) == 2);
  EXPECT(kessel_finding_at(result, 0, &row, sizeof row) == 1);
  EXPECT(row.severity == KESSEL_WARNING);
  EXPECT(kessel_finding_at(result, 1, &row, sizeof row) == 1);
  EXPECT(row.severity == KESSEL_ERROR);
  EXPECT_TEXT(row.kind, "unreadable");
  EXPECT_TEXT(row.file, "");
  kessel_free(result);
  kessel_default_options(&options, sizeof options);
  options.progress = cancel;
  result = kessel_verify(ASSEMBLY, "parts", &options);
  EXPECT(kessel_status_of(result) == KESSEL_CANCELLED);
  EXPECT_TEXT(kessel_error_of(result), "The check was cancelled.");
  EXPECT(kessel_finding_count(result) == 0);
  kessel_free(result);
  result = kessel_verify(NULL, "parts", NULL);
  EXPECT(kessel_status_of(result) == KESSEL_BAD_ARGUMENT);
  kessel_free(result);
  result = kessel_verify(ASSEMBLY, NULL, NULL);
  EXPECT(kessel_status_of(result) == KESSEL_BAD_ARGUMENT);
  kessel_free(result);
  EXPECT(kessel_finding_count(NULL) == 0);
  EXPECT(kessel_finding_at(NULL, 0, &row, sizeof row) == 0);
}

/* Shrinks into "small.stp", expects how that ended, and returns how many records are left. */
static uint64_t shrunk(const char* in, const struct kessel_options* options,
                       enum kessel_status status, const char* error) {
  struct kessel_shrunk figures;
  kessel_result* result = kessel_shrink(in, "small.stp", options);
  EXPECT(kessel_status_of(result) == status);
  EXPECT_TEXT(kessel_error_of(result), error);
  EXPECT(kessel_file_count(result) == (status == KESSEL_DONE ? 1u : 0u));
  if (status == KESSEL_DONE) EXPECT_TEXT(kessel_file(result, 0), "small.stp");
  kessel_shrunk_of(result, &figures, sizeof figures);
  EXPECT(figures.records_before >= figures.records_after + figures.unreachable);
  EXPECT((figures.bytes_after == 0) == (status != KESSEL_DONE));
  kessel_free(result);
  return figures.records_after;
}

static void shrinking(void) {
  struct kessel_options options;
  write_file("twice.stp",
             "#1=A(#2);\n#2=COLOUR_RGB('',0.,0.,0.);\n#3=COLOUR_RGB('',0.,0.,0.);\n#4=A(#3);\n"
             "#5=COLOUR_RGB('',1.,0.,0.);\n");
  EXPECT(shrunk("twice.stp", NULL, KESSEL_DONE, "") == 4);
  EXPECT(shrunk("twice.stp", NULL, KESSEL_OUTPUT_ERROR,
                "small.stp: cannot be written: File exists") == 0);
  remove("small.stp");
  EXPECT(shrunk("missing.stp", NULL, KESSEL_INPUT_ERROR,
                "missing.stp: The file cannot be opened: No such file or directory.") == 0);
  EXPECT(shrunk(NULL, NULL, KESSEL_BAD_ARGUMENT, "The path of the input is missing.") == 0);
  kessel_default_options(&options, sizeof options);
  options.flags = (uint64_t)1 << 63;
  EXPECT(shrunk("twice.stp", &options, KESSEL_BAD_ARGUMENT, "There is no such flag.") == 0);
  options.flags = KESSEL_DROP_UNREACHABLE | KESSEL_RENUMBER;
  EXPECT(shrunk("twice.stp", &options, KESSEL_DONE, "") == 3);
  remove("small.stp");
  options.progress = cancel;
  EXPECT(shrunk("twice.stp", &options, KESSEL_CANCELLED, "The shrinking was cancelled.") == 0);
  kessel_shrunk_of(NULL, NULL, 8);
}

/* Extracts into "one.stp" and expects how that ended, and which files there are. */
static void expect_extracted(const char* part, const struct kessel_options* options,
                             enum kessel_status status, const char* error, size_t files) {
  kessel_result* result = kessel_extract(ASSEMBLY, part, "one.stp", options);
  EXPECT(kessel_status_of(result) == status);
  EXPECT_TEXT(kessel_error_of(result), error);
  EXPECT(kessel_file_count(result) == files);
  EXPECT((access("one.stp", R_OK) == 0) == (files == 1));
  if (files == 1) EXPECT_TEXT(kessel_file(result, 0), "one.stp");
  kessel_free(result);
}

static void extracting(void) {
  struct kessel_options options;
  kessel_default_options(&options, sizeof options);
  options.progress = cancel_at_once;
  remove("one.stp");
  expect_extracted("bolt", &options, KESSEL_CANCELLED, "The extraction was cancelled.", 0);
  expect_extracted("screw", NULL, KESSEL_BAD_ARGUMENT,
                   ASSEMBLY ": There is no part called \"screw\".", 0);
  expect_extracted(NULL, NULL, KESSEL_BAD_ARGUMENT, "The name of the part is missing.", 0);
  expect_extracted("bolt", NULL, KESSEL_DONE, "", 1);
  remove("one.stp");
  expect_extracted("joint/nut", NULL, KESSEL_DONE, "", 1);
  EXPECT(kessel_status_of(NULL) == KESSEL_OUT_OF_MEMORY);
}

/* A file of one product #10, called `name`, with `more` records. */
static void write_product(const char* path, const char* name, const char* more) {
  char records[2000];
  snprintf(records, sizeof records,
           "#10=PRODUCT_DEFINITION('d','',#12,$);\n#11=PRODUCT('%s','%s','',());\n"
           "#12=PRODUCT_DEFINITION_FORMATION('','',#11);\n"
           "#13=PRODUCT_DEFINITION_SHAPE('','',#10);\n"
           "#14=SHAPE_DEFINITION_REPRESENTATION(#13,#15);\n"
           "#15=SHAPE_REPRESENTATION('',(),#16);\n"
           "#16=GEOMETRIC_REPRESENTATION_CONTEXT('','',3);\n%s",
           name, name, more);
  write_file(path, records);
}

/* Whether `path` holds `text`. */
static int holds(const char* path, const char* text) {
  char read[4000] = "";
  FILE* file = fopen(path, "r");
  if (file == NULL) return 0;
  read[fread(read, 1, sizeof read - 1, file)] = 0;
  fclose(file);
  return strstr(read, text) != NULL;
}

static size_t split_with(const char* outdir, uint64_t flags, enum kessel_status status) {
  struct kessel_options options = default_options();
  size_t files;
  kessel_result* result;
  options.flags = flags;
  result = kessel_split("in/in.stp", outdir, &options);
  EXPECT(kessel_status_of(result) == status);
  files = kessel_file_count(result);
  kessel_free(result);
  return files;
}

/* Returns how many files were written. */
static size_t extract_with(const char* out, uint64_t flags, enum kessel_status status) {
  struct kessel_options options = default_options();
  size_t files;
  kessel_result* result;
  options.flags = flags;
  result = kessel_extract("in/in.stp", "lid", out, &options);
  EXPECT(kessel_status_of(result) == status);
  files = kessel_file_count(result);
  if (files == 2) EXPECT_TEXT(kessel_file(result, 1), "lid.stp");
  kessel_free(result);
  return files;
}

static void picture_with(const char* out, uint64_t flags, enum kessel_status status) {
  struct kessel_options options = default_options();
  kessel_result* result;
  options.flags = flags;
  result = kessel_picture("in/in.stp", NULL, KESSEL_VIEW_TOP, out, &options);
  EXPECT(kessel_status_of(result) == status);
  kessel_free(result);
}

/* Expects that a run did what it was to do and has one finding, on text behind the end of `file`.
 */
static void expect_text_behind(const char* file, const char* sentence, kessel_result* result) {
  struct kessel_finding row;
  EXPECT(kessel_status_of(result) == KESSEL_DONE);
  EXPECT(kessel_finding_count(result) == 1);
  EXPECT(kessel_finding_at(result, 0, &row, sizeof row) == 1);
  EXPECT_TEXT(row.kind, "text_after_end");
  EXPECT_TEXT(row.file, file);
  EXPECT_TEXT(row.sentence, sentence);
  EXPECT(row.severity == KESSEL_WARNING);
  kessel_free(result);
}

/* What following the references of "in/in.stp" warns of stands in the results. */
static void expect_warnings_of_followed(void) {
  const char* const sentence = "Text stands behind \"END-ISO-10303-21;\"; it is left out.";
  const char* const of_lid =
      "\"lid.stp\": Text stands behind \"END-ISO-10303-21;\"; it is left out.";
  struct kessel_options options = default_options();
  FILE* file;
  EXPECT(remove("in/lid.stp") == 0);
  write_product("in/lid.stp", "lid", "");
  file = fopen("in/lid.stp", "a");
  EXPECT(file != NULL && fputs("more", file) >= 0 && fclose(file) == 0);
  options.flags = KESSEL_FOLLOW_REFERENCES;
  expect_text_behind("lid.stp", sentence, kessel_split("in/in.stp", "warned", &options));
  expect_text_behind("lid.stp", sentence,
                     kessel_extract("in/in.stp", "box", "warned.stp", &options));
  expect_text_behind("lid.stp", sentence,
                     kessel_picture("in/in.stp", NULL, KESSEL_VIEW_TOP, "warned.svg", &options));
  expect_text_behind("lid.stp", sentence, kessel_join("in/in.stp", "joined.stp", &options));
  EXPECT(rename("roots.txt", "warned/roots.txt") == 0);
  expect_text_behind("", of_lid, kessel_verify("in/in.stp", "warned", &options));
  expect_text_behind("lid.stp", sentence, kessel_overview("in/in.stp", &options));
  options.flags |= KESSEL_DRAW;
  expect_text_behind("lid.stp", sentence, kessel_overview("in/in.stp", &options));
  options.flags = 0;
  expect_text_behind("", sentence, kessel_shrink("in/lid.stp", "small.stp", &options));
}

/* How many findings a check with `flags` of the box below has; `file` is that of the first. */
static size_t check_with(uint64_t flags, const char* file) {
  struct kessel_options options;
  struct kessel_finding finding;
  kessel_default_options(&options, sizeof options);
  options.flags = flags;
  kessel_result* result = kessel_check("in/in.stp", &options);
  const size_t count = kessel_finding_count(result);
  EXPECT(kessel_status_of(result) == KESSEL_DONE);
  if (kessel_finding_at(result, 0, &finding, sizeof finding)) EXPECT_TEXT(finding.file, file);
  kessel_free(result);
  return count;
}

/* What becomes of files that the input refers to: "box" of a "lid", whose shape is in lid.stp. */
static void references(void) {
  const char* const assembly =
      "#20=PRODUCT_DEFINITION('d','',#22,$);\n#21=PRODUCT('lid','lid','',());\n"
      "#22=PRODUCT_DEFINITION_FORMATION('','',#21);\n"
      "#30=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#10,#20,$);\n"
      "#31=DOCUMENT_FILE('lid.stp','','',$,'',$);\n"
      "#32=APPLIED_DOCUMENT_REFERENCE(#31,'',(#20));\n";
  const uint64_t other = KESSEL_FOLLOW_REFERENCES | KESSEL_FOLLOW_OUTSIDE;
  mkdir("in", 0777);
  write_product("in/in.stp", "box", assembly);
  write_product("in/lid.stp", "lid",
                "#17=GEOMETRICALLY_BOUNDED_WIREFRAME_SHAPE_REPRESENTATION('',(#18),#16);\n"
                "#18=GEOMETRIC_CURVE_SET('',(#19));\n#19=POLYLINE('',(#20,#21));\n"
                "#20=CARTESIAN_POINT('',(0.,0.,0.));\n#21=CARTESIAN_POINT('',(1.,0.,0.));\n"
                "#22=SHAPE_DEFINITION_REPRESENTATION(#13,#17);\n#23=NOTE(#99);\n");
  EXPECT(split_with("keep", 0, KESSEL_DONE) == 2);
  EXPECT(holds("keep/lid (2).stp", "=DOCUMENT_FILE('../in/lid.stp',"));
  EXPECT(split_with("copy", KESSEL_COPY_REFERENCES, KESSEL_DONE) == 3);
  EXPECT(holds("copy/lid (2).stp", "=DOCUMENT_FILE('lid.stp',"));
  EXPECT(holds("copy/lid.stp", "SHAPE_REPRESENTATION"));
  EXPECT(split_with("follow", KESSEL_FOLLOW_REFERENCES, KESSEL_DONE) == 2);
  EXPECT(holds("follow/lid.stp", "SHAPE_REPRESENTATION"));
  EXPECT(!holds("follow/lid.stp", "DOCUMENT_FILE"));
  EXPECT(extract_with("kept.stp", 0, KESSEL_DONE) == 1);
  EXPECT(holds("kept.stp", "=DOCUMENT_FILE('in/lid.stp',"));
  EXPECT(extract_with("copied.stp", KESSEL_COPY_REFERENCES, KESSEL_DONE) == 2);
  EXPECT(holds("copied.stp", "=DOCUMENT_FILE('lid.stp',"));
  EXPECT(holds("lid.stp", "SHAPE_REPRESENTATION"));
  extract_with("followed.stp", KESSEL_FOLLOW_REFERENCES | KESSEL_SHRINK, KESSEL_DONE);
  EXPECT(holds("followed.stp", "SHAPE_REPRESENTATION"));
  picture_with("kept.svg", 0, KESSEL_DONE);
  EXPECT(!holds("kept.svg", "<path "));
  picture_with("followed.svg", KESSEL_FOLLOW_REFERENCES, KESSEL_DONE);
  EXPECT(holds("followed.svg", "<path "));
  EXPECT(check_with(0, "") == 0);
  EXPECT(check_with(KESSEL_FOLLOW_REFERENCES, "lid.stp") == 1);
  /* The same with the file outside of the input's folder. */
  EXPECT(rename("in/lid.stp", "lid.stp") == 0);
  EXPECT(symlink("../lid.stp", "in/lid.stp") == 0);
  EXPECT(split_with("no", KESSEL_FOLLOW_REFERENCES, KESSEL_INPUT_ERROR) == 0);
  EXPECT(split_with("no", KESSEL_COPY_REFERENCES, KESSEL_INPUT_ERROR) == 0);
  extract_with("no.stp", KESSEL_FOLLOW_REFERENCES, KESSEL_INPUT_ERROR);
  EXPECT(check_with(KESSEL_FOLLOW_REFERENCES, "") == 1);
  EXPECT(check_with(other, "../lid.stp") == 1);
  picture_with("no.svg", KESSEL_FOLLOW_REFERENCES, KESSEL_INPUT_ERROR);
  EXPECT(access("no", F_OK) != 0 && access("no.stp", F_OK) != 0 && access("no.svg", F_OK) != 0);
  EXPECT(split_with("outside", other, KESSEL_DONE) == 2);
  EXPECT(holds("outside/lid.stp", "SHAPE_REPRESENTATION"));
  extract_with("outside.stp", other, KESSEL_DONE);
  EXPECT(holds("outside.stp", "SHAPE_REPRESENTATION"));
  picture_with("outside.svg", other, KESSEL_DONE);
  EXPECT(holds("outside.svg", "<path "));
  expect_warnings_of_followed();
}

/* Draws into "one.svg" and expects how that ended. */
static void expect_drawn(const char* part, int32_t view, const struct kessel_options* options,
                         enum kessel_status status, const char* error) {
  kessel_result* result = kessel_picture(ASSEMBLY, part, view, "one.svg", options);
  EXPECT(kessel_status_of(result) == status);
  EXPECT_TEXT(kessel_error_of(result), error);
  EXPECT(kessel_file_count(result) == (status == KESSEL_DONE ? 1 : 0));
  if (status == KESSEL_DONE) EXPECT_TEXT(kessel_file(result, 0), "one.svg");
  EXPECT((access("one.svg", R_OK) == 0) == (status == KESSEL_DONE));
  remove("one.svg");
  kessel_free(result);
}

static void drawing(void) {
  struct kessel_options options;
  kessel_default_options(&options, sizeof options);
  options.progress = cancel_at_once;
  expect_drawn(NULL, KESSEL_VIEW_TOP, &options, KESSEL_CANCELLED, "The drawing was cancelled.");
  expect_drawn("screw", KESSEL_VIEW_TOP, NULL, KESSEL_BAD_ARGUMENT,
               ASSEMBLY ": There is no part called \"screw\".");
  expect_drawn(NULL, 4, NULL, KESSEL_BAD_ARGUMENT, "There is no such view.");
  expect_drawn(NULL, KESSEL_VIEW_ISOMETRIC, NULL, KESSEL_DONE, "");
  expect_drawn("bolt", KESSEL_VIEW_RIGHT, NULL, KESSEL_DONE, "");
}

/* What makes a "box" of two lids: nobody knows where the first is, the second is turned and moved.
   Their line is red, and a record is missing. */
static const char* const BOX_OF_LIDS =
    "#20=PRODUCT_DEFINITION('d','',#22,$);\n#21=PRODUCT('L\\X2\\00FC\\X0\\d','lid','flat',());\n"
    "#22=PRODUCT_DEFINITION_FORMATION('','',#21);\n#23=PRODUCT_DEFINITION_SHAPE('','',#20);\n"
    "#24=SHAPE_DEFINITION_REPRESENTATION(#23,#25);\n"
    "#25=GEOMETRICALLY_BOUNDED_WIREFRAME_SHAPE_REPRESENTATION('',(#26,#40),#27);\n"
    "#26=GEOMETRIC_CURVE_SET('',(#28));\n"
    "#27=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#29))"
    "REPRESENTATION_CONTEXT('',''));\n"
    "#28=POLYLINE('',(#30,#31,#32));\n#29=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n"
    "#30=CARTESIAN_POINT('',(0.,0.,0.));\n#31=CARTESIAN_POINT('',(2.,0.,0.));\n"
    "#32=CARTESIAN_POINT('',(2.,1.,0.));\n#33=DIRECTION('',(0.,0.,1.));\n"
    "#34=DIRECTION('',(0.,1.,0.));\n#35=CARTESIAN_POINT('',(10.,0.,0.));\n"
    "#36=AXIS2_PLACEMENT_3D('',#35,#33,#34);\n"
    "#40=AXIS2_PLACEMENT_3D('',#30,$,$);\n"
    "#41=NEXT_ASSEMBLY_USAGE_OCCURRENCE('1','','',#10,#20,$);\n"
    "#42=NEXT_ASSEMBLY_USAGE_OCCURRENCE('2','','',#10,#20,$);\n"
    "#43=PRODUCT_DEFINITION_SHAPE('','',#42);\n"
    "#44=CONTEXT_DEPENDENT_SHAPE_REPRESENTATION(#45,#43);\n"
    "#45=(REPRESENTATION_RELATIONSHIP('','',#25,#15)"
    "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION(#46)SHAPE_REPRESENTATION_RELATIONSHIP());\n"
    "#46=ITEM_DEFINED_TRANSFORMATION('','',#40,#36);\n"
    "#50=STYLED_ITEM('',(#51),#28);\n#51=PRESENTATION_STYLE_ASSIGNMENT((#52));\n"
    "#52=CURVE_STYLE('',$,$,#53);\n#53=COLOUR_RGB('',1.,0.,0.);\n#54=A(#99);\n";

static void expect_components(kessel_result* result, int is_drawn) {
  struct kessel_component component;
  const double turned[] = {0, -1, 0, 10, 1, 0, 0, 0, 0, 0, 1, 0};
  EXPECT(kessel_component_at(result, 0, 0, &component, sizeof component) == 1);
  EXPECT(component.part == 1 && component.closes_cycle == 0);
  EXPECT(component.usage == (is_drawn ? 41 : 0) && component.is_placed == 0);
  EXPECT(kessel_component_at(result, 0, 1, &component, sizeof component) == 1);
  EXPECT(component.part == 1 && component.is_hidden == 0);
  if (is_drawn) {
    EXPECT(component.usage == 42 && component.is_placed == 1 && component.colour == -1);
    EXPECT(memcmp(component.matrix, turned, sizeof turned) == 0);
  }
  EXPECT(kessel_component_at(result, 0, 2, &component, sizeof component) == 0);
  EXPECT(component.part == 0 && component.usage == 0);
  EXPECT(kessel_component_at(result, 1, 0, &component, sizeof component) == 0);
  EXPECT(kessel_component_at(result, 2, 0, &component, sizeof component) == 0);
  EXPECT(kessel_component_at(result, 0, 0, NULL, sizeof component) == 1);
}

static void expect_summary(kessel_result* result, int is_drawn) {
  struct kessel_summary summary;
  EXPECT(kessel_summary_of(result, &summary, sizeof summary) == 1);
  EXPECT(summary.records == 36 && summary.bytes > 1000);
  EXPECT(summary.parts == 1 && summary.assemblies == 1 && summary.assemblies_with_bodies == 0);
  EXPECT(summary.depth == 2 && summary.root == 0 && summary.is_drawn == is_drawn);
  EXPECT_TEXT(summary.schema, "AUTOMOTIVE_DESIGN");
  EXPECT_TEXT(summary.name, "");
  EXPECT_TEXT(summary.author, "");
  EXPECT_TEXT(summary.length_unit, "millimetre");
  EXPECT(summary.length_unit_metres == 0.001);
  EXPECT(kessel_summary_of(result, NULL, sizeof summary) == 1);
}

static void expect_lid(kessel_result* result, int is_drawn) {
  struct kessel_part part;
  const double points[] = {0, 0, 0, 2, 0, 0, 2, 1, 0};
  struct kessel_line line;
  EXPECT(kessel_part_at(result, 1, &part, sizeof part) == 1);
  EXPECT(part.record == 20 && part.role == KESSEL_PART && part.total == 2);
  EXPECT_TEXT(part.id,
              "L\xC3\xBC"
              "d");
  EXPECT_TEXT(part.name, "lid");
  EXPECT_TEXT(part.description, "flat");
  EXPECT_TEXT(part.file, "lid.stp");
  EXPECT_TEXT(part.external_file, "");
  EXPECT_TEXT(part.unit, is_drawn ? "millimetre" : "");
  EXPECT(part.components == 0 && part.dropped == 0);
  EXPECT(part.lines == (is_drawn ? 1 : 0) && part.has_box == is_drawn);
  EXPECT(part.unit_metres == (is_drawn ? 0.001 : 0) && part.high[0] == (is_drawn ? 2 : 0));
  EXPECT(kessel_line_at(result, 1, 0, &line, sizeof line) == is_drawn);
  EXPECT(line.count == (is_drawn ? 3 : 0));
  if (is_drawn) {
    EXPECT(line.record == 28 && line.colour == 0xFF0000);
    EXPECT(memcmp(line.points, points, sizeof points) == 0);
  }
  EXPECT(kessel_line_at(result, 1, 1, &line, sizeof line) == 0 && line.points == NULL);
  EXPECT(kessel_line_at(result, 2, 0, &line, sizeof line) == 0);
  EXPECT(kessel_part_at(result, 2, &part, sizeof part) == 0 && part.name == NULL);
}

static void overview(void) {
  int is_drawn;
  struct kessel_options options = default_options();
  write_product("box.stp", "box", BOX_OF_LIDS);
  for (is_drawn = 0; is_drawn <= 1; ++is_drawn) {
    struct kessel_part part;
    struct kessel_finding finding;
    kessel_result* result;
    options.flags = is_drawn ? KESSEL_DRAW : 0;
    result = kessel_overview("box.stp", &options);
    EXPECT(kessel_status_of(result) == KESSEL_DONE);
    EXPECT(kessel_file_count(result) == 0);
    EXPECT(kessel_part_count(result) == 2);
    expect_summary(result, is_drawn);
    EXPECT(kessel_part_at(result, 0, &part, sizeof part) == 1);
    EXPECT(part.role == KESSEL_ASSEMBLY && part.components == 2 && part.lines == 0);
    /* With all components, at their places. */
    EXPECT(part.low[0] == 0 && part.high[0] == (is_drawn ? 10 : 0));
    EXPECT(part.high[1] == (is_drawn ? 2 : 0));
    expect_lid(result, is_drawn);
    expect_components(result, is_drawn);
    EXPECT(kessel_finding_count(result) == 1);
    EXPECT(kessel_finding_at(result, 0, &finding, sizeof finding) == 1);
    EXPECT_TEXT(finding.kind, "missing_instance");
    kessel_free(result);
  }
}

static void overview_failures(void) {
  struct kessel_part part;
  struct kessel_summary summary;
  struct kessel_options options = default_options();
  kessel_result* result = kessel_overview("missing.stp", NULL);
  EXPECT(kessel_status_of(result) == KESSEL_INPUT_ERROR);
  EXPECT(kessel_part_count(result) == 0 && kessel_finding_count(result) == 0);
  EXPECT(kessel_summary_of(result, &summary, sizeof summary) == 0 && summary.name == NULL);
  EXPECT(kessel_part_at(result, 0, &part, sizeof part) == 0 && part.name == NULL);
  kessel_free(result);
  options.progress = cancel_at_once;
  result = kessel_overview(ASSEMBLY, &options);
  EXPECT(kessel_status_of(result) == KESSEL_CANCELLED);
  EXPECT_TEXT(kessel_error_of(result), "The reading was cancelled.");
  kessel_free(result);
  result = kessel_overview(NULL, NULL);
  EXPECT(kessel_status_of(result) == KESSEL_BAD_ARGUMENT);
  kessel_free(result);
  write_file("none.stp", "#1=A();\n");
  result = kessel_overview("none.stp", NULL);
  EXPECT(kessel_summary_of(result, &summary, sizeof summary) == 1);
  EXPECT(summary.root == SIZE_MAX && summary.depth == 0 && kessel_part_count(result) == 0);
  EXPECT_TEXT(summary.length_unit, "");
  kessel_free(result);
  EXPECT(kessel_summary_of(NULL, &summary, sizeof summary) == 0);
  EXPECT(kessel_part_count(NULL) == 0);
  EXPECT(kessel_component_at(NULL, 0, 0, NULL, 0) == 0 && kessel_line_at(NULL, 0, 0, NULL, 0) == 0);
}

static void checking(void) {
  struct kessel_finding row;
  kessel_result* result = kessel_check(ASSEMBLY, NULL);
  EXPECT(kessel_status_of(result) == KESSEL_DONE && kessel_finding_count(result) == 0);
  kessel_free(result);
  write_file("bad.stp", "#1=A(#2);\n");
  result = kessel_check("bad.stp", NULL);
  EXPECT(kessel_status_of(result) == KESSEL_DONE && kessel_finding_count(result) == 2);
  EXPECT(kessel_finding_at(result, 0, &row, sizeof row) == 1);
  EXPECT_TEXT(row.kind, "no_part");
  EXPECT(kessel_finding_at(result, 1, &row, sizeof row) == 1);
  EXPECT(row.line == 8 && row.column == 1 && row.instance == 1);
  EXPECT_TEXT(row.file, "");
  kessel_free(result);
  result = kessel_check("missing.stp", NULL);
  EXPECT(kessel_status_of(result) == KESSEL_DONE && kessel_finding_count(result) == 1);
  kessel_free(result);
  result = kessel_check(NULL, NULL);
  EXPECT(kessel_status_of(result) == KESSEL_BAD_ARGUMENT);
  kessel_free(result);
}

static void null_arguments(void) {
  kessel_default_options(NULL, sizeof(struct kessel_options));
  kessel_classic_options(NULL, sizeof(struct kessel_options));
  EXPECT(kessel_status_of(NULL) == KESSEL_OUT_OF_MEMORY);
  EXPECT_TEXT(kessel_error_of(NULL), "Not enough memory.");
  EXPECT(kessel_file_count(NULL) == 0);
  EXPECT(kessel_file(NULL, 0) == NULL);
  kessel_free(NULL);
}

static void out_of_memory(void) {
  struct rlimit limit = {1 << 20, RLIM_INFINITY};
  EXPECT(setrlimit(RLIMIT_AS, &limit) == 0);
  EXPECT_FAILURE(ASSEMBLY, "out", NULL, KESSEL_OUT_OF_MEMORY, "Not enough memory.");
}

static const struct {
  const char* name;
  void (*run)(void);
} CASES[] = {
    {"defaults", defaults},
    {"classic_options", classic_options},
    {"choices", choices},
    {"nothing_to_split", nothing_to_split},
    {"one_part", one_part},
    {"bad_arguments", bad_arguments},
    {"input_errors", input_errors},
    {"output_errors", output_errors},
    {"progress", progress},
    {"cancelling", cancelling},
    {"joining", joining},
    {"differences", differences},
    {"verification", verification},
    {"shrinking", shrinking},
    {"extracting", extracting},
    {"references", references},
    {"drawing", drawing},
    {"older_options", older_options},
    {"newer_options", newer_options},
    {"comparing", comparing},
    {"overview", overview},
    {"overview_failures", overview_failures},
    {"checking", checking},
    {"null_arguments", null_arguments},
    {"out_of_memory", out_of_memory},
};

static int remove_one(const char* path, const struct stat* what, int kind, struct FTW* walk) {
  (void)what;
  (void)kind;
  (void)walk;
  return remove(path);
}

int main(int argc, char** argv) {
  const char* temporary = getenv("TMPDIR");
  char folder[4096];
  size_t i;
  if (argc != 2) return 2;
  snprintf(folder, sizeof folder, "%s/c_interface_test.XXXXXX",
           temporary == NULL ? "/tmp" : temporary);
  if (mkdtemp(folder) == NULL || chdir(folder) != 0) {
    perror(folder);
    return 2;
  }
  for (i = 0; i < sizeof CASES / sizeof *CASES; ++i) {
    if (strcmp(CASES[i].name, argv[1]) != 0) continue;
    CASES[i].run();
    nftw(folder, remove_one, 8, FTW_DEPTH | FTW_PHYS);
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
  }
  fprintf(stderr, "no such case: %s\n", argv[1]);
  return 2;
}
