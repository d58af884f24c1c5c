#include "support/frail_disk.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

std::string Bytes(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes(fs::exists(path) ? fs::file_size(path) : 0, ' ');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

int Fail(int reason) {
  errno = reason;
  return -1;
}

}  // namespace

FrailDisk::FrailDisk(const std::string& folder)
    : folder_(fs::canonical(folder).string()), before_(TheFileCalls) {
  Names names;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder_)) {
    if (!entry.is_regular_file()) continue;
    names[entry.path().string()] = inodes_.size();
    inodes_.push_back({Bytes(entry.path()), {}});
  }
  Note(names);
  WatchFiles();
  WatchNames();
}

FrailDisk::~FrailDisk() { TheFileCalls = before_; }

void FrailDisk::FailCall(int number, DiskFault fault) {
  left_ = number;
  fault_ = fault;
  failed_ = false;
}

bool FrailDisk::Strikes() {
  const bool now = left_ > 0 && --left_ == 0;
  failed_ = failed_ || now;
  return now;
}

void FrailDisk::Make(const Change& change, std::string& bytes) {
  if (change.IsCut) return bytes.resize(change.Place);
  bytes.resize(std::max(bytes.size(), change.Place + change.Bytes.size()));
  bytes.replace(change.Place, change.Bytes.size(), change.Bytes);
}

ssize_t FrailDisk::WriteNow(int file, const void* bytes, std::size_t count, off_t place) {
  const ssize_t written = system_.Write(file, bytes, count, place);
  if (written > 0 && open_.contains(file))
    inodes_[open_[file]].Since.push_back(
        {static_cast<std::size_t>(place),
         {static_cast<const char*>(bytes), static_cast<std::size_t>(written)}});
  return written;
}

void FrailDisk::WatchFiles() {
  TheFileCalls.Close = [this](int file) {
    const bool struck = Strikes() && fault_ == DiskFault::Error;
    open_.erase(file);
    folders_.erase(file);
    const int result = system_.Close(file);  // a program that ends closes its files
    return struck ? Fail(EIO) : result;
  };
  TheFileCalls.Read = [this](int file, void* bytes, std::size_t count, off_t place) -> ssize_t {
    const bool now = Strikes();
    if (Fails(now)) return Fail(EIO);
    return system_.Read(file, bytes, now ? (count + 1) / 2 : count, place);
  };
  TheFileCalls.Write = [this](int file, const void* bytes, std::size_t count, off_t at) -> ssize_t {
    const bool now = Strikes();
    const bool half = now && fault_ != DiskFault::Error && fault_ != DiskFault::Kill;
    const ssize_t done = half ? WriteNow(file, bytes, (count + 1) / 2, at) : 0;
    if (half && fault_ != DiskFault::HalfKill) return done;
    if (Fails(now)) return Fail(EIO);
    if (failed_ && fault_ == DiskFault::Full) return Fail(ENOSPC);
    return WriteNow(file, bytes, count, at);
  };
  TheFileCalls.Truncate = [this](int file, off_t length) {
    if (Fails(Strikes())) return Fail(EIO);
    if (open_.contains(file))
      inodes_[open_[file]].Since.push_back({static_cast<std::size_t>(length), "", true});
    return system_.Truncate(file, length);
  };
  TheFileCalls.Sync = [this](int file) {
    if (Fails(Strikes())) return Fail(EIO);
    if (folders_.contains(file)) since_ = {since_.back()};
    if (!open_.contains(file)) return 0;
    Inode& inode = inodes_[open_[file]];
    for (const Change& change : inode.Since) Make(change, inode.Kept);
    inode.Since.clear();
    return 0;
  };
  TheFileCalls.Lock = [this](int file, int operation) {
    if (Fails(Strikes())) return Fail(ENOLCK);
    return system_.Lock(file, operation);
  };
}

void FrailDisk::WatchNames() {
  TheFileCalls.Open = [this](const char* path, int flags, mode_t mode) {
    if (Fails(Strikes())) return Fail(EMFILE);
    const int file = system_.Open(path, flags, mode);
    if (file < 0) return file;
    const std::string name = path;
    if ((flags & O_DIRECTORY) != 0) folders_[file] = name;
    if ((flags & O_DIRECTORY) != 0 || !IsInside(name)) return file;
    Names names = since_.back();
    if (!names.contains(name)) {
      names[name] = inodes_.size();
      inodes_.emplace_back();
      Note(names);
    }
    open_[file] = names[name];
    return file;
  };
  const auto change = [this](const auto& call, const auto& edit) {
    if (Fails(Strikes())) return Fail(EIO);
    const int result = call();
    if (result != 0) return result;
    Names names = since_.back();
    edit(names);
    Note(names);
    return result;
  };
  TheFileCalls.Rename = [this, change](const char* from, const char* to) {
    return change([&] { return system_.Rename(from, to); },
                  [&](Names& names) {
                    if (IsInside(to)) names[to] = names[from];
                    names.erase(from);
                  });
  };
  TheFileCalls.Link = [this, change](const char* from, const char* to) {
    return change([&] { return system_.Link(from, to); },
                  [&](Names& names) { names[to] = names[from]; });
  };
  TheFileCalls.Remove = [this, change](const char* path) {
    return change([&] { return system_.Remove(path); }, [&](Names& names) { names.erase(path); });
  };
}

std::string FrailDisk::Found(const Inode& inode, std::mt19937& chance) {
  std::string bytes = inode.Kept;
  for (Change change : inode.Since) {
    if (chance() % 2 == 0) continue;
    if (!change.IsCut && chance() % 3 == 0)
      change.Bytes.resize(chance() % (change.Bytes.size() + 1));
    Make(change, bytes);
  }
  return bytes;
}

void FrailDisk::LosePower(std::mt19937& chance) {
  const Names names = since_[chance() % since_.size()];
  std::vector<fs::path> gone;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder_))
    if (entry.is_regular_file() && !names.contains(entry.path().string()))
      gone.push_back(entry.path());
  for (const fs::path& path : gone) fs::remove(path);
  for (const auto& [name, number] : names) {
    const std::string bytes = Found(inodes_[number], chance);
    // Written over where it stands, so that the file keeps its number on the disk.
    if (Bytes(name) != bytes || !fs::exists(name)) std::ofstream(name, std::ios::binary) << bytes;
  }
}
