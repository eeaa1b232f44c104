/* Calls the library like a program that has none of its headers: exported functions by name,
 * operations by their slot numbers in an object's table. There is one case for each kind of call;
 * Tools/check-contract.py checks the position of every slot. Deliberately plain C. */

#include <stdbool.h>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

typedef void (*Slot)(void);
typedef struct Object {
  const Slot* slots;
} Object;

typedef struct Variant {
  uint32_t type;
  uint64_t value[2];
} Variant;

extern bool Data_CreateArray(Object** out);
extern bool Data_CreateString(Object** out);
extern bool Data_CreateVariantList(Object** out);
extern bool Data_CreateDateTimeFromIso8601(const char* text, Object** out, Object** error);
extern bool Data_ParseCsv(const char* text, uint64_t size, Object** out, Object** error);
extern bool Data_ConvertTableToCsv(Object* table, const char* separator, Object** out, bool quote,
                                   Object** error);
extern uint32_t Data_DetectValueType(const char* text, uint64_t size);

/* The operation in a slot, as a function that takes the object first. */
#define AT(object, slot, type) ((type)(object)->slots[slot])

typedef void (*Do)(Object*);
typedef bool (*Is)(Object*);
typedef uint32_t (*GetU32)(Object*);
typedef uint64_t (*GetU64)(Object*);
typedef const char* (*GetText)(Object*);

static bool failed;
#define CHECK(condition)                                               \
  do {                                                                 \
    if (!(condition)) {                                                \
      printf("%s:%d: is false: %s\n", __FILE__, __LINE__, #condition); \
      failed = true;                                                   \
    }                                                                  \
  } while (0)

static void ReleaseLast(Object* object) { CHECK(AT(object, 1, GetU32)(object) == 0); }

static void CheckText(Object* string, const char* expected) {
  CHECK(string && strcmp(AT(string, 11, GetText)(string), expected) == 0);
  ReleaseLast(string);
}

static void CountsAndLocks(void) {
  Object* array = NULL;
  CHECK(Data_CreateArray(&array));
  AT(array, 0, Do)(array);
  CHECK(AT(array, 1, GetU32)(array) == 1);
  AT(array, 2, Do)(array);
  AT(array, 4, Do)(array);
  CHECK(AT(array, 3, Is)(array));
  AT(array, 4, Do)(array);
  AT(array, 5, Do)(array); /* destroys it, as the last Release does */
}

static void SizesAndErrors(void) {
  Object *array = NULL, *error = NULL;
  typedef const char* (*GetPointer)(Object*, uint64_t, uint64_t, Object**);
  CHECK(Data_CreateArray(&array));
  AT(array, 6, void (*)(Object*, const void*, uint64_t, uint64_t))(array, "abcdefgh", 4, 2);
  CHECK(AT(array, 12, GetU64)(array) == 2);
  CHECK(AT(array, 13, GetU64)(array) == 8);
  CHECK(memcmp(AT(array, 8, GetPointer)(array, 4, 4, NULL), "efgh", 4) == 0);
  CHECK(AT(array, 8, GetPointer)(array, UINT64_C(1) << 32, 4, &error) == NULL);
  CHECK(strcmp(AT(error, 6, GetText)(error), "Offset or size are not in data bounds") == 0);
  CHECK(AT(error, 8, GetU32)(error) == 2);
  ReleaseLast(error);
  ReleaseLast(array);
}

static void IntegersAndDoubles(void) {
  Object *date = NULL, *copy = NULL, *text = NULL;
  CHECK(Data_CreateDateTimeFromIso8601("2024-11-14T10:20:30Z", &date, NULL));
  CHECK(AT(date, 6, uint16_t(*)(Object*))(date) == 2024);
  AT(date, 34, void (*)(Object*, Object**))(date, &copy);
  AT(date, 17, void (*)(Object*, uint16_t))(date, 2020);
  AT(date, 26, void (*)(Object*, int32_t))(date, -14);
  AT(date, 27, void (*)(Object*, double))(date, 1.5);
  AT(date, 31, void (*)(Object*, int64_t))(date, INT64_C(-300000000000));
  CHECK(AT(date, 32, int32_t(*)(Object*, Object*, int32_t))(date, copy, 0) == -1);
  CHECK(AT(copy, 43, int64_t(*)(Object*))(copy) == 1731579630);
  AT(date, 37, void (*)(Object*, Object**))(date, &text);
  CheckText(text, "2020-10-31T03:30:30.000000000Z");
  ReleaseLast(copy);
  ReleaseLast(date);
}

static void FlagsAndRecords(void) {
  Object *strings[2] = {NULL, NULL}, *list = NULL;
  const Variant seven = {4, {7, 0}};
  Variant found = {0, {0, 0}};
  typedef int32_t (*Compare)(Object*, Object*, bool);
  for (int i = 0; i < 2; ++i) {
    CHECK(Data_CreateString(&strings[i]));
    AT(strings[i], 8, void (*)(Object*, const char*, uint64_t))(strings[i], i ? "A" : "a", 1);
  }
  CHECK(AT(strings[0], 16, Compare)(strings[0], strings[1], false) == 0);
  CHECK(AT(strings[0], 16, Compare)(strings[0], strings[1], true) > 0);
  ReleaseLast(strings[0]);
  ReleaseLast(strings[1]);
  CHECK(Data_CreateVariantList(&list));
  AT(list, 7, void (*)(Object*, const Variant*))(list, &seven);
  CHECK(AT(list, 6, bool (*)(Object*, uint64_t, Variant*))(list, 0, &found));
  CHECK(found.type == 4 && found.value[0] == 7);
  ReleaseLast(list);
  CHECK(Data_DetectValueType("-1e5", 4) == 13);
}

static void VariableArguments(void) {
  static const char left[] = "id;name\n1;Ada\n2;Bob\n",
                    right[] = "id;name;born\n2;Bob;1815\n2;Ada;0\n";
  Object *tables[3] = {NULL}, *text = NULL;
  typedef bool (*MergeOn)(Object*, Object*, int32_t, Object**, Object**, uint32_t, ...);
  CHECK(Data_ParseCsv(left, sizeof left - 1, &tables[0], NULL));
  CHECK(Data_ParseCsv(right, sizeof right - 1, &tables[1], NULL));
  CHECK(AT(tables[0], 37, MergeOn)(tables[0], tables[1], 0, &tables[2], NULL, 2, "id", "name"));
  CHECK(Data_ConvertTableToCsv(tables[2], ";", &text, true, NULL));
  CheckText(text, "id;name;born\n2;\"Bob\";1815");
  for (int i = 0; i < 3; ++i) ReleaseLast(tables[i]);
}

int main(void) {
  CountsAndLocks();
  SizesAndErrors();
  IntegersAndDoubles();
  FlagsAndRecords();
  VariableArguments();
  printf("[%s] SlotsFromC.CallsEachKindOfSlot (0 ms)\n", failed ? "  FAILED  " : "       OK ");
  return failed;
}
