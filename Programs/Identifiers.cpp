#include <LayerData/Text.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "Bytes.h"
#include "Commands.h"
#include "Target.h"

namespace program {

namespace {

using layerdata::detail::Receive;

// -- hash --

struct HashOptions {
  std::vector<std::string> files;
  std::string algorithm = "sha256";
};

layerdata::detail::Handle<ld_hashing> MakeHashing(const std::string& algorithm) {
  if (algorithm == "md5") return Receive<ld_hashing>(ld_create_hashing_instance_md5);
  if (algorithm == "sha1") return Receive<ld_hashing>(ld_create_hashing_instance_sha1);
  const std::uint32_t variant = algorithm == "sha256" ? 0 : algorithm == "sha384" ? 1 : 2;
  return Receive<ld_hashing>(ld_create_hashing_instance_sha2, variant);
}

std::string HashOf(ld_hashing* hashing, std::string_view bytes) {
  const auto digest =
      Receive<ld_array>(ld_hashing_hash, hashing, static_cast<const void*>(bytes.data()),
                        std::uint64_t{bytes.size()});
  const auto* data = static_cast<const std::uint8_t*>(
      layerdata::detail::Ask<void*>(ld_array_get_data, digest.Get()));
  const auto size = layerdata::detail::Ask<std::uint64_t>(ld_array_get_count, digest.Get());
  std::string text;
  for (std::uint64_t i = 0; i < size; ++i) {
    text += "0123456789abcdef"[data[i] >> 4];
    text += "0123456789abcdef"[data[i] & 15];
  }
  return text;
}

ExitCode Hash(const HashOptions& options) {
  const auto hashing = MakeHashing(options.algorithm);
  const Target output("-");
  for (const std::string& file : options.files)
    output.Write(HashOf(hashing.Get(), Bytes(file).View()) + "  " + file + "\n");
  return ExitCode::Success;
}

void AddHashOptions(CLI::App& command, HashOptions& options) {
  command.add_option("files", options.files, "Files, or - for standard input")->required();
  command.add_option("-a,--algorithm", options.algorithm, "md5, sha1, sha256, sha384 or sha512")
      ->check(CLI::IsMember({"md5", "sha1", "sha256", "sha384", "sha512"}))
      ->capture_default_str();
}

// -- uuid --

struct UuidOptions {
  std::int64_t count = 1;
};

ExitCode Uuid(const UuidOptions& options) {
  const Target output("-");
  std::string lines;
  for (std::int64_t i = 0; i < options.count; ++i) {
    ld_uuid uuid;
    layerdata::detail::Call(ld_new_uuid, &uuid);
    lines +=
        layerdata::Text(Receive<ld_string>(ld_uuid_to_string, static_cast<const ld_uuid*>(&uuid)));
    lines += '\n';
    if (lines.size() < 1 << 16 && i + 1 < options.count) continue;
    output.Write(lines);
    lines.clear();
  }
  return ExitCode::Success;
}

void AddUuidOptions(CLI::App& command, UuidOptions& options) {
  command.add_option("-n,--count", options.count, "How many")
      ->check(CLI::Range(std::int64_t{1}, std::int64_t{1'000'000'000}))
      ->capture_default_str();
}

}  // namespace

void AddHash(CLI::App& app, Job& job) {
  AddCommand<HashOptions>(app, job, "hash", "Print the hash of files",
                          "  layerdata hash stations.csv\n"
                          "  layerdata hash -a md5 *.csv\n",
                          AddHashOptions, Hash);
}

void AddUuid(CLI::App& app, Job& job) {
  AddCommand<UuidOptions>(app, job, "uuid", "Print new random identifiers",
                          "  layerdata uuid -n 3\n", AddUuidOptions, Uuid);
}

}  // namespace program
