// Output that appears under its final name only when complete: everything is
// written under a hidden temporary name beside the final one (".NAME.part-…"),
// which is renamed into place by commit() and removed otherwise. Every error
// names the output the user asked for, never the temporary.
#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace zvcli {

class AtomicOutput {
 public:
  enum Kind { kFile, kFolder };
  // Creates the temporary (an empty file or folder); a RunError when it cannot.
  AtomicOutput(const std::string& final_path, Kind kind);
  ~AtomicOutput();
  AtomicOutput(const AtomicOutput&) = delete;
  AtomicOutput& operator=(const AtomicOutput&) = delete;

  const std::filesystem::path& temp_path() const { return temp_; }
  const std::string& final_path() const { return final_; }

  // Files: appends bytes to the temporary (or writes through stream()).
  void write(const void* data, size_t size);
  std::FILE* stream();
  // Folders: one whole file inside the temporary folder.
  void write_member(const std::string& name, const std::vector<uint8_t>& bytes);
  // Closes the stream (checking every byte reached the disk) and renames the
  // temporary to the final name.
  void commit();
  // A RunError "FINAL: cannot write: REASON".
  [[noreturn]] void fail(const std::string& reason) const;

 private:
  std::string final_;
  std::filesystem::path target_, temp_;
  Kind kind_;
  std::FILE* stream_ = nullptr;
  bool committed_ = false;
};

// The whole file at once, through AtomicOutput.
void write_file_atomically(const std::string& path, const std::vector<uint8_t>& bytes);

// Writes stdout's buffered text out; a RunError when it cannot be written
// (a full disk, a closed stream).
void flush_stdout();

}  // namespace zvcli
