#include "quintara/documents.h"

#include <algorithm>
#include <system_error>
#include <vector>

#include "base/attempt.h"
#include "base/failure.h"
#include "base/text.h"
#include "quintara/product_tree.h"
#include "quintara/wrong_use.h"

namespace quintara {
namespace {

namespace fs = std::filesystem;

bool IsFile(const std::string& path) {
  std::error_code error;
  return fs::is_regular_file(ToPath(path), error);
}

std::string Absolute(const std::string& path) {
  return FromPath(fs::absolute(ToPath(path)).lexically_normal());
}

void RefuseFolder(const std::string& argument) {
  std::error_code error;
  if (fs::is_directory(ToPath(argument), error)) throw WrongUse("'" + argument + "' is a folder");
}

std::vector<std::string> ProductFiles(const CommandContext& context) {
  std::vector<std::string> files;
  std::error_code error;
  for (fs::directory_iterator entry(ToPath(context.WorkPath()), error), end; !error && entry != end;
       entry.increment(error)) {
    if (HasExtension(FromPath(entry->path()), ".ZVAProduct")) files.push_back(FromPath(entry->path()));
  }
  std::sort(files.begin(), files.end());
  return files;
}

// A file that can't be read has no part number that could be meant.
std::vector<std::string> FilesOfPartNumber(CommandContext& context, const std::string& partNumber) {
  auto files = ProductFiles(context);
  std::erase_if(files, [&](const std::string& file) {
    return OrElse(std::string(), [&] { return PartNumberOfFile(file, context.Files()); }) != partNumber;
  });
  return files;
}

std::string TheOnly(const std::vector<std::string>& files, const std::string& argument) {
  if (files.size() == 1) return files.front();
  std::string text = "several products have the part number '" + argument + "', name one by its file:";
  for (const auto& file : files) text += "\n  " + file;
  throw WrongUse(text);
}

bool IsWip(const Ref<zorva::Product>& root) {
  return OrElse(false, [&] {
    return root->PartNumber().starts_with(kWipPrefix) && StringProperty(root, "WIP") == "TRUE" &&
           StringProperty(root, "From") == "Quintara";
  });
}

Ref<zorva::ProductDocument> OpenFile(CommandContext& context, const std::string& path) {
  const auto document = context.Host().Application()->Documents()->Open(path);
  if (auto product = document->AsProductDocument()) return product;
  const auto advice = HasExtension(path, ".lwt") ? "" : "; 'quintara import' makes one of a STEP assembly";
  throw WrongUse("'" + path + "' is no product document" + advice);
}

}  // namespace

std::string ExistingFile(const CommandContext& context, const std::string& argument) {
  if (argument.empty()) return {};
  if (IsFile(argument)) return Absolute(argument);
  return IsFile(context.WorkPath(argument)) ? context.WorkPath(argument) : std::string();
}

std::string DocumentOfPartNumber(CommandContext& context, const std::string& argument, Wanted wanted) {
  std::vector<std::string> partNumbers{argument, kWipPrefix + argument};
  if (wanted == Wanted::kWip) std::swap(partNumbers.front(), partNumbers.back());
  for (const auto& partNumber : partNumbers) {
    const auto files = FilesOfPartNumber(context, partNumber);
    if (!files.empty()) return TheOnly(files, partNumber);
  }
  return {};
}

std::string FindDocument(CommandContext& context, const std::string& argument, Wanted wanted) {
  if (auto file = ExistingFile(context, argument); !file.empty()) return file;
  if (auto file = DocumentOfPartNumber(context, argument, wanted); !file.empty()) return file;
  RefuseFolder(argument);
  throw WrongUse("there is no file '" + argument + "', and no product of that part number in '" + context.WorkPath() +
                 "'");
}

std::string FindFile(CommandContext& context, const std::string& argument, const std::string& what) {
  if (auto file = ExistingFile(context, argument); !file.empty()) return file;
  RefuseFolder(argument);
  throw WrongUse("there is no " + what + " '" + argument + "'");
}

Ref<zorva::ProductDocument> OpenProduct(CommandContext& context, const std::string& argument) {
  return OpenFile(context, FindDocument(context, argument, Wanted::kProduct));
}

Ref<zorva::ProductDocument> OpenWip(CommandContext& context, const std::string& argument) {
  const auto path = FindDocument(context, argument, Wanted::kWip);
  auto document = OpenFile(context, path);
  if (!IsWip(document->Product())) {
    throw WrongUse("'" + path + "' is no work in progress; 'quintara flatten' makes one");
  }
  return document;
}

void SaveChanges(CommandContext& context, const Ref<zorva::ProductDocument>& document, bool dryRun) {
  const auto path = document->FullName();
  if (!dryRun) context.Host().Save(document, path);
  context.Print(dryRun ? "nothing saved, as asked: '" + path + "'" : "saved '" + path + "'");
}

std::string TargetPath(const std::string& path, bool replace) {
  std::error_code error;
  const auto target = fs::absolute(ToPath(path)).lexically_normal();
  if (!fs::is_directory(target.parent_path(), error)) {
    throw Failure(failure::kPathNotFound, "there is no folder '" + FromPath(target.parent_path()) + "'");
  }
  if (fs::is_directory(target, error)) throw Failure(failure::kPathAccess, "'" + path + "' is a folder");
  if (!replace && fs::exists(fs::symlink_status(target, error))) {
    throw Failure(failure::kPathAccess, "'" + path + "' exists already; --replace replaces it");
  }
  return FromPath(target);
}

std::string FileName(const std::string& path) {
  return FromPath(ToPath(path).filename());
}

}  // namespace quintara
