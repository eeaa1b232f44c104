/* Drives the library as programs do that have none of its headers: exported functions by name,
 * operations by their slot number in an object's table. Plain C on purpose. */

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

typedef struct Uuid {
  uint32_t data1;
  uint16_t data2, data3;
  uint8_t data4[8];
} Uuid;

enum { kInt32 = 4, kInt64 = 5, kDouble = 13 };

/* The operation in a slot, as a function that takes the object first. */
#define AT(object, slot, type) ((type)(object)->slots[slot])

typedef void (*Do)(Object*);
typedef bool (*Is)(Object*);
typedef uint32_t (*GetU32)(Object*);
typedef uint64_t (*GetU64)(Object*);
typedef int64_t (*GetI64)(Object*);
typedef const char* (*GetText)(Object*);
typedef bool (*MakeObject)(Object*, Object**, Object**);
typedef void (*SetBytes)(Object*, const char*, uint64_t);

static bool failed;
#define CHECK(condition)                                             \
  do {                                                               \
    if (!(condition)) {                                              \
      printf("%s:%d: not so: %s\n", __FILE__, __LINE__, #condition); \
      failed = true;                                                 \
    }                                                                \
  } while (0)

/* -- What every object has, slots 0 to 5 -- */

static void Retain(Object* object) { AT(object, 0, Do)(object); }
static uint32_t Release(Object* object) { return AT(object, 1, GetU32)(object); }
static void ReleaseLast(Object* object) { CHECK(Release(object) == 0); }

extern bool Data_CreateArray(Object** out);

static void CountsAndLocks(void) {
  Object* array = NULL;
  CHECK(Data_CreateArray(&array));
  Retain(array);
  CHECK(Release(array) == 1);
  AT(array, 2, Do)(array);
  AT(array, 4, Do)(array);
  CHECK(AT(array, 3, Is)(array));
  AT(array, 4, Do)(array);
  AT(array, 5, Do)(array); /* destroys it, as the last Release does */
}

/* -- Errors -- */

static void CheckError(Object* error, const char* message) {
  CHECK(error != NULL);
  if (!error) return;
  CHECK(strcmp(AT(error, 6, GetText)(error), message) == 0);
  CHECK(AT(error, 7, GetU64)(error) == strlen(message));
  CHECK(AT(error, 8, GetU32)(error) == 2);
  CHECK(!AT(error, 3, Is)(error)); /* has no mutex to take */
  ReleaseLast(error);
}

/* -- Arrays -- */

static void Array(void) {
  Object *array = NULL, *error = NULL;
  CHECK(Data_CreateArray(&array));
  AT(array, 6, void (*)(Object*, const void*, uint64_t, uint64_t))(array, "abcdefghijkl", 4, 3);
  CHECK(AT(array, 11, GetU64)(array) == 4);
  CHECK(AT(array, 12, GetU64)(array) == 3);
  CHECK(AT(array, 13, GetU64)(array) == 12);
  const char* data = AT(array, 9, GetText)(array);
  CHECK(AT(array, 10, GetText)(array) == data);
  typedef const char* (*GetPointer)(Object*, uint64_t, uint64_t, Object**);
  CHECK(AT(array, 8, GetPointer)(array, 8, 4, &error) == data + 8);
  CHECK(AT(array, 8, GetPointer)(array, 9, 4, &error) == NULL);
  CheckError(error, "Offset or size are not in data bounds");
  AT(array, 7, void (*)(Object*, uint64_t, uint64_t))(array, 1, 4);
  CHECK(AT(array, 14, uint64_t(*)(Object*, uint64_t, const void*, uint64_t))(array, 2, "CDEFG",
                                                                             5) == 7);
  CHECK(AT(array, 15, uint64_t(*)(Object*, const void*, uint64_t))(array, "H", 1) == 8);
  CHECK(memcmp(AT(array, 9, GetText)(array), "abCDEFGH", 8) == 0);
  ReleaseLast(array);
}

/* -- Text -- */

extern bool Data_CreateString(Object** out);

static Object* NewString(const char* utf8) {
  Object* string = NULL;
  CHECK(Data_CreateString(&string));
  AT(string, 8, SetBytes)(string, utf8, strlen(utf8));
  return string;
}

static bool Reads(Object* string, const char* utf8) {
  return string && strcmp(AT(string, 11, GetText)(string), utf8) == 0;
}

static void CheckAndReleaseString(Object* string, const char* utf8) {
  CHECK(Reads(string, utf8));
  if (string) ReleaseLast(string);
}

static void String(void) {
  static const uint16_t wide[] = {0xe9, 't', 0xe9, 0};
  Object *string = NewString("\xc3\xa9t\xc3\xa9"), *other = NewString("\xc3\xa9T\xc3\xa9");
  typedef int32_t (*Compare)(Object*, Object*, bool);
  CHECK(AT(string, 16, Compare)(string, other, false) == 0);
  CHECK(AT(string, 16, Compare)(string, other, true) > 0);
  CHECK(memcmp(AT(string, 12, GetText)(string), wide, sizeof wide) == 0);
  CHECK(AT(string, 14, GetU64)(string) == 3);
  CHECK(AT(string, 15, GetU64)(string) == 8);
  AT(string, 6, void (*)(Object*, const uint16_t*, uint64_t))(string, wide, 3);
  CHECK(strcmp(AT(string, 10, const char* (*)(Object*, uint32_t))(string, 1252), "\xe9t\xe9") == 0);
  CHECK(strcmp(AT(string, 13, GetText)(string), "\xe9t\xe9") == 0);
  AT(string, 7, void (*)(Object*, const char*, uint64_t, uint32_t))(string, "\x80", 1, 1252);
  CHECK(Reads(string, "\xe2\x82\xac"));
  AT(string, 9, GetText)(string);
  CHECK(AT(string, 15, GetU64)(string) == 0);
  ReleaseLast(other);
  ReleaseLast(string);
}

extern bool Data_CreateSecureString(Object* text, Object** out, Object** error);

static void SecureString(void) {
  Object *plain = NewString("open sesame"), *secure = NULL, *text = NULL;
  CHECK(Data_CreateSecureString(plain, &secure, NULL));
  CHECK(AT(secure, 7, GetU64)(secure) == 11);
  CHECK(AT(secure, 6, MakeObject)(secure, &text, NULL));
  CheckAndReleaseString(text, "open sesame");
  ReleaseLast(secure);
  ReleaseLast(plain);
}

extern bool Data_UuidFromString(const char* text, Uuid* out);
extern bool Data_UuidToString(const Uuid* uuid, Object** out);
extern bool Data_NewUuid(Uuid* out);

static void Identifiers(void) {
  Uuid uuid, fresh;
  Object* text = NULL;
  CHECK(Data_UuidFromString("6B29FC40-CA47-1067-B31D-00DD010662DA", &uuid));
  CHECK(uuid.data1 == 0x6b29fc40 && uuid.data4[7] == 0xda);
  CHECK(Data_UuidToString(&uuid, &text));
  CheckAndReleaseString(text, "6b29fc40-ca47-1067-b31d-00dd010662da");
  CHECK(Data_NewUuid(&fresh) && memcmp(&fresh, &uuid, sizeof uuid) != 0);
}

extern bool Data_CreateEncodingInstanceBase64(Object** out, Object** error);
extern bool Data_CreateEncodingInstanceBase64Url(Object** out, Object** error);

static bool Holds(Object* array, const char* bytes, uint64_t count) {
  return array && AT(array, 12, GetU64)(array) == count &&
         memcmp(AT(array, 9, GetText)(array), bytes, count) == 0;
}

static void Encodings(void) {
  static const struct {
    bool (*create)(Object**, Object**);
    const char* text;
  } cases[] = {{Data_CreateEncodingInstanceBase64, "+/8="},
               {Data_CreateEncodingInstanceBase64Url, "-_8"}};
  for (unsigned i = 0; i < 2; ++i) {
    Object *encoder = NULL, *bytes = NULL, *text = NULL, *back = NULL;
    typedef bool (*Convert)(Object*, Object*, Object**, Object**);
    CHECK(cases[i].create(&encoder, NULL) && Data_CreateArray(&bytes));
    AT(bytes, 15, uint64_t(*)(Object*, const void*, uint64_t))(bytes, "\xfb\xff", 2);
    CHECK(AT(encoder, 6, Convert)(encoder, bytes, &text, NULL));
    CHECK(Holds(text, cases[i].text, strlen(cases[i].text)));
    CHECK(AT(encoder, 7, Convert)(encoder, text, &back, NULL));
    CHECK(Holds(back, "\xfb\xff", 2));
    ReleaseLast(back);
    ReleaseLast(text);
    ReleaseLast(bytes);
    ReleaseLast(encoder);
  }
}

extern bool Data_CreateHashingInstanceMD5(Object** out, Object** error);
extern bool Data_CreateHashingInstanceSha1(Object** out, Object** error);
extern bool Data_CreateHashingInstanceSha2(uint32_t variant, Object** out, Object** error);
extern bool Data_CreateHashingInstanceHmacSha2(uint32_t variant, Object* key, Object** out,
                                               Object** error);

/* Hashes "abc" and compares the digest's length and first bytes. */
static void CheckDigest(Object* hash, uint64_t size, const char* start) {
  Object* digest = NULL;
  typedef bool (*Hash)(Object*, const void*, uint64_t, Object**, Object**);
  CHECK(AT(hash, 6, Hash)(hash, "abc", 3, &digest, NULL));
  CHECK(AT(digest, 12, GetU64)(digest) == size);
  CHECK(memcmp(AT(digest, 9, GetText)(digest), start, 4) == 0);
  ReleaseLast(digest);
  ReleaseLast(hash);
}

static void Hashes(void) {
  Object *hashes[4] = {NULL}, *none = NULL, *key = NULL, *error = NULL;
  CHECK(Data_CreateArray(&key));
  CHECK(Data_CreateHashingInstanceMD5(&hashes[0], NULL));
  CHECK(Data_CreateHashingInstanceSha1(&hashes[1], NULL));
  CHECK(Data_CreateHashingInstanceSha2(2, &hashes[2], NULL));
  CHECK(Data_CreateHashingInstanceHmacSha2(0, key, &hashes[3], NULL));
  CheckDigest(hashes[0], 16, "\x90\x01\x50\x98");
  CheckDigest(hashes[1], 20, "\xa9\x99\x3e\x36");
  CheckDigest(hashes[2], 64, "\xdd\xaf\x35\xa1");
  CheckDigest(hashes[3], 32, "\xfd\x7a\xdb\x15");
  CHECK(!Data_CreateHashingInstanceHmacSha2(7, key, &none, &error));
  CheckError(error, "Hashing method is not supported!");
  ReleaseLast(key);
}

/* -- Lists -- */

extern bool Data_CreateObjectList(Object** out);
extern bool Data_CreateVariantList(Object** out);
extern bool Data_CreateVariantDictionary(Object** out, Object** error);
extern bool Data_CreateVariantPairList(Object** out, Object** error);

/* The padding between the members is anyone's. */
static bool Same(const Variant* left, const Variant* right) {
  return left->type == right->type && memcmp(left->value, right->value, sizeof left->value) == 0;
}

static void ObjectList(void) {
  Object *list = NULL, *string = NewString("kept");
  CHECK(Data_CreateObjectList(&list));
  CHECK(AT(list, 8, Is)(list));
  AT(list, 7, void (*)(Object*, Object*))(list, string);
  CHECK(AT(list, 10, GetU64)(list) == 1);
  CHECK(AT(list, 6, Object * (*)(Object*, uint64_t))(list, 0) == string);
  CHECK(AT(list, 6, Object * (*)(Object*, uint64_t))(list, 1) == NULL);
  CHECK(Release(string) == 1); /* the list's own reference */
  AT(list, 9, Do)(list);
  CHECK(AT(list, 10, GetU64)(list) == 0);
  ReleaseLast(list);
}

static void VariantList(void) {
  const Variant seven = {kInt32, {7, 0}};
  Variant found = {0, {0, 0}};
  Object* list = NULL;
  CHECK(Data_CreateVariantList(&list));
  AT(list, 7, void (*)(Object*, const Variant*))(list, &seven);
  CHECK(!AT(list, 8, Is)(list));
  CHECK(AT(list, 10, GetU64)(list) == 1);
  typedef bool (*GetAt)(Object*, uint64_t, Variant*);
  CHECK(!AT(list, 6, GetAt)(list, 1, &found));
  CHECK(AT(list, 6, GetAt)(list, 0, &found));
  CHECK(Same(&found, &seven));
  AT(list, 9, Do)(list);
  CHECK(AT(list, 8, Is)(list));
  ReleaseLast(list);
}

static void VariantDictionary(void) {
  const Variant key = {kInt32, {7, 0}}, sameKey = {kInt64, {7, 0}}, value = {kDouble, {42, 0}};
  Variant found = {0, {0, 0}};
  Object *map = NULL, *keys = NULL, *error = NULL;
  typedef bool (*Get)(Object*, const Variant*, Variant*, Object**);
  typedef bool (*Contains)(Object*, const Variant*, Object**);
  typedef bool (*Set)(Object*, const Variant*, const Variant*, Object**);
  CHECK(Data_CreateVariantDictionary(&map, NULL));
  CHECK(AT(map, 9, Is)(map));
  CHECK(!AT(map, 6, Get)(map, &key, &found, &error));
  CheckError(error, "invalid unordered_map<K, T> key");
  CHECK(AT(map, 8, Set)(map, &key, &value, NULL));
  CHECK(AT(map, 7, Contains)(map, &sameKey, NULL));
  CHECK(AT(map, 6, Get)(map, &sameKey, &found, NULL));
  CHECK(Same(&found, &value));
  CHECK(AT(map, 11, GetU64)(map) == 1);
  CHECK(AT(map, 12, MakeObject)(map, &keys, NULL));
  CHECK(AT(keys, 10, GetU64)(keys) == 1);
  CHECK(AT(map, 10, Is)(map));
  CHECK(AT(map, 11, GetU64)(map) == 0);
  ReleaseLast(keys);
  ReleaseLast(map);
}

static void VariantPairList(void) {
  const Variant key = {kInt32, {7, 0}}, value = {kDouble, {42, 0}};
  Variant foundKey = {0, {0, 0}}, foundValue = {0, {0, 0}};
  Object *pairs = NULL, *error = NULL;
  typedef bool (*GetAt)(Object*, uint64_t, Variant*, Variant*, Object**);
  typedef bool (*Add)(Object*, const Variant*, const Variant*, Object**);
  CHECK(Data_CreateVariantPairList(&pairs, NULL));
  CHECK(AT(pairs, 8, Is)(pairs));
  CHECK(AT(pairs, 7, Add)(pairs, &key, &value, NULL));
  CHECK(AT(pairs, 10, GetU64)(pairs) == 1);
  CHECK(AT(pairs, 6, GetAt)(pairs, 0, &foundKey, &foundValue, NULL));
  CHECK(Same(&foundKey, &key) && Same(&foundValue, &value));
  CHECK(!AT(pairs, 6, GetAt)(pairs, 1, &foundKey, &foundValue, &error));
  CheckError(error, "Index out of bounds!");
  CHECK(AT(pairs, 9, Is)(pairs));
  CHECK(AT(pairs, 8, Is)(pairs));
  ReleaseLast(pairs);
}

/* -- Dates -- */

extern bool Data_CreateCurrentDateTime(Object** out);
extern bool Data_CreateMinimumDateTime(Object** out);
extern bool Data_CreateMaximumDateTime(Object** out);
extern bool Data_CreateDateTimeFromIso8601(const char* text, Object** out, Object** error);
extern bool Data_CreateDateTimeFromPosixTime(int64_t seconds, Object** out);
extern bool Data_CreateDateTimeFromFileTime(uint64_t ticks, Object** out);

static void CheckPrinted(Object* dateTime, int slot, const char* expected) {
  Object* text = NULL;
  AT(dateTime, slot, void (*)(Object*, Object**))(dateTime, &text);
  CheckAndReleaseString(text, expected);
}

static void CheckDateTime(Object* dateTime, const char* expected) {
  CheckPrinted(dateTime, 37, expected);
  ReleaseLast(dateTime);
}

static void DateTimeFactories(void) {
  Object *dates[6] = {NULL}, *error = NULL;
  CHECK(Data_CreateCurrentDateTime(&dates[0]));
  CHECK(AT(dates[0], 6, uint16_t(*)(Object*))(dates[0]) > 2000);
  ReleaseLast(dates[0]);
  CHECK(Data_CreateMinimumDateTime(&dates[1]));
  CHECK(Data_CreateMaximumDateTime(&dates[2]));
  CHECK(Data_CreateDateTimeFromIso8601("2024-11-14T10:20:30.123Z", &dates[3], NULL));
  CHECK(Data_CreateDateTimeFromPosixTime(-1, &dates[4]));
  CHECK(Data_CreateDateTimeFromFileTime(0, &dates[5]));
  CheckDateTime(dates[1], "0001-01-01T00:00:00.000000000Z");
  CheckDateTime(dates[2], "9999-12-31T00:00:00.000000000Z");
  CheckDateTime(dates[3], "2024-11-14T10:20:30.123000000Z");
  CheckDateTime(dates[4], "1969-12-31T23:59:59.000000000Z");
  CheckDateTime(dates[5], "1601-01-01T00:00:00.000000000Z");
  Object* none = NULL;
  CHECK(!Data_CreateDateTimeFromIso8601("2024-05", &none, &error));
  CheckError(error, "Day cannot be 0");
}

static void DateTimeFields(void) {
  static const uint16_t fields[] = {2024, 11, 14, 10, 20, 30}, changed[] = {2020, 2, 29, 1, 2, 3};
  Object* date = NULL;
  CHECK(Data_CreateDateTimeFromIso8601("2024-11-14T10:20:30.123Z", &date, NULL));
  for (int i = 0; i < 6; ++i) CHECK(AT(date, 6 + i, uint16_t(*)(Object*))(date) == fields[i]);
  CHECK(AT(date, 12, GetU32)(date) == 123000000);
  CHECK(AT(date, 13, int32_t(*)(Object*))(date) == 0);
  CHECK(AT(date, 14, uint16_t(*)(Object*))(date) == 4);
  CHECK(AT(date, 15, int32_t(*)(Object*))(date) == 46);
  CHECK(AT(date, 16, int32_t(*)(Object*))(date) == 319);
  for (int i = 0; i < 6; ++i) AT(date, 17 + i, void (*)(Object*, uint16_t))(date, changed[i]);
  AT(date, 23, void (*)(Object*, int32_t))(date, 4999999);
  for (int slot = 24; slot <= 26; ++slot) AT(date, slot, void (*)(Object*, int32_t))(date, 1);
  CheckPrinted(date, 37, "2021-03-29T01:02:03.004000000Z");
  for (int slot = 27; slot <= 30; ++slot) AT(date, slot, void (*)(Object*, double))(date, 1.5);
  AT(date, 31, void (*)(Object*, int64_t))(date, -5000);
  CheckPrinted(date, 37, "2021-03-29T02:33:34.505000000Z");
  ReleaseLast(date);
}

static void DateTimeOperations(void) {
  Object *date = NULL, *copy = NULL;
  CHECK(Data_CreateDateTimeFromPosixTime(86399, &date));
  AT(date, 34, void (*)(Object*, Object**))(date, &copy);
  CHECK(AT(date, 33, int32_t(*)(Object*, Object*))(date, copy) == 0);
  AT(copy, 31, void (*)(Object*, int64_t))(copy, 10000000);
  CHECK(AT(date, 33, int32_t(*)(Object*, Object*))(date, copy) == -1);
  CHECK(AT(date, 32, int32_t(*)(Object*, Object*, int32_t))(date, copy, 0) == 0);
  CHECK(AT(copy, 43, GetI64)(copy) == 86400);
  CHECK(AT(copy, 42, GetU64)(copy) == 116444736000000000u + 864000000000u);
  CHECK(AT(date, 41, uint64_t(*)(Object*, int32_t))(date, 3) == 116444736000000000u);
  CHECK(AT(date, 35, bool (*)(Object*, const char*))(date, "Europe/Prague"));
  CHECK(strcmp(AT(date, 36, GetText)(date), "Europe/Prague") == 0);
  CheckPrinted(copy, 38, "T00:00:00.000000000Z");
  CheckPrinted(copy, 39, "1970-01-02");
  CheckPrinted(copy, 40, "19700102T000000Z");
  ReleaseLast(copy);
  ReleaseLast(date);
}

int main(void) {
  static const struct {
    const char* name;
    void (*run)(void);
  } cases[] = {
      {"CountsAndLocks", CountsAndLocks},
      {"Array", Array},
      {"String", String},
      {"SecureString", SecureString},
      {"Identifiers", Identifiers},
      {"Encodings", Encodings},
      {"Hashes", Hashes},
      {"ObjectList", ObjectList},
      {"VariantList", VariantList},
      {"VariantDictionary", VariantDictionary},
      {"VariantPairList", VariantPairList},
      {"DateTimeFactories", DateTimeFactories},
      {"DateTimeFields", DateTimeFields},
      {"DateTimeOperations", DateTimeOperations},
  };
  bool anyFailed = false;
  for (size_t i = 0; i < sizeof cases / sizeof *cases; ++i) {
    failed = false;
    cases[i].run();
    printf("[%s] SlotsFromC.%s (0 ms)\n", failed ? "  FAILED  " : "       OK ", cases[i].name);
    anyFailed |= failed;
  }
  return anyFailed;
}
