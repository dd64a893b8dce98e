// Stands for the last step of writing a matrix workbook: the rows whose part number and name stood in
// a row before get another name. Held against a map of the pairs of the standard library.

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

#include "access/session/the_platform.h"
#include "hosts/native/native_platform.h"
#include "matrix/Cls_HashTable.h"
#include "matrix/random_text.h"
#include "verdicts.h"

namespace quintara::bench {
namespace {

constexpr int kMany = 15'000;
constexpr int kFew = kMany / 4;
constexpr int kRepeats = 10;  // one row in ten repeats one before it

using Couples = std::vector<PN_IN_Couple>;
using NewNames = std::vector<std::string>;  // by row; empty where none was written

// Asking the system for the separator would cost both sides more than the rest of a renaming.
class Desktop : public NativePlatform {
 public:
  Desktop() : NativePlatform(std::make_shared<Gate>(), &Desktop::Throw) {}
  std::string DecimalSeparator() override { return "."; }

 private:
  static int Throw(const std::string& text, int, const std::string&) { throw std::runtime_error(text); }
};

// A workbook that keeps the names written into column 4 of its second worksheet.
class Cell : public excel::Range {
 public:
  Cell(NewNames& names, int row) : names_(names), row_(row) {}
  Variant Value() override { return names_[Index()]; }
  void SetValue(const Variant& value) override { names_[Index()] = value.ToText(); }
  std::string NumberFormat() override { return format_; }
  void SetNumberFormat(const std::string& format) override { format_ = format; }
  void Copy(const Ref<excel::Range>&) override { ThrowNoSuchMember("Copy"); }
  Ref<excel::Range> SpecialCells(int) override { ThrowNoSuchMember("SpecialCells"); }
  Ref<excel::Range> End(int) override { ThrowNoSuchMember("End"); }
  int Row() override { return row_; }

 private:
  std::size_t Index() const { return static_cast<std::size_t>(row_); }

  NewNames& names_;
  int row_;
  std::string format_;
};

class Sheet : public excel::Worksheet {
 public:
  explicit Sheet(NewNames& names) : names_(names) {}
  Ref<excel::Range> Range(const std::string&) override { ThrowNoSuchMember("Range"); }
  Ref<excel::Range> Cells() override { ThrowNoSuchMember("Cells"); }
  Ref<excel::Range> Cells(int row, int column) override {
    if (column != 4) throw std::runtime_error("not the column of the names");
    return MakeRef<Cell>(names_, row);
  }

 private:
  NewNames& names_;
};

class Sheets : public excel::Worksheets {
 public:
  explicit Sheets(NewNames& names) : second_(MakeRef<Sheet>(names)) {}
  Ref<excel::Worksheet> Item(int index) override { return index == 2 ? second_ : nullptr; }

 private:
  Ref<excel::Worksheet> second_;
};

class Workbook : public excel::Workbook {
 public:
  explicit Workbook(NewNames& names) : sheets_(MakeRef<Sheets>(names)) {}
  Ref<excel::Worksheets> Worksheets() override { return sheets_; }
  void Save() override { ThrowNoSuchMember("Save"); }
  void SaveAs(const std::string&) override { ThrowNoSuchMember("SaveAs"); }
  void Close(bool) override {}

 private:
  Ref<excel::Worksheets> sheets_;
};

class Excel : public excel::Application {
 public:
  explicit Excel(NewNames& names) : workbook_(MakeRef<Workbook>(names)) {}
  bool Visible() override { return false; }
  void SetVisible(bool) override {}
  int SheetsInNewWorkbook() override { return 3; }
  void SetSheetsInNewWorkbook(int) override {}
  Ref<excel::Workbooks> Workbooks() override { return nullptr; }
  Ref<excel::Workbook> ActiveWorkbook() override { return workbook_; }
  void Quit() override {}

 private:
  Ref<excel::Workbook> workbook_;
};

class Random {
 public:
  std::size_t Below(std::size_t end) { return std::uniform_int_distribution<std::size_t>(0, end - 1)(engine_); }
  std::string Name() {
    static constexpr std::string_view kCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    std::string name(20, ' ');
    for (char& character : name) character = kCharacters[Below(kCharacters.size())];
    return name;
  }

 private:
  std::mt19937 engine_{20'26};
};

PN_IN_Couple Ordinary(int number) {
  const auto digits = std::to_string(number);
  const auto partNumber = "PART-" + std::string(5 - digits.size(), '0') + digits;
  return {partNumber, partNumber + ".1", 0};
}

template <class Make>
Couples MakeCouples(int count, Make&& make) {
  Random random;
  Couples couples;
  for (int row = 1; row <= count; ++row) {
    const bool isRepeat = row % kRepeats == 0;
    couples.push_back(isRepeat ? couples[random.Below(couples.size())] : make(random, row));
    couples.back().Row = row;
  }
  return couples;
}

Couples RandomNames(int count) {
  return MakeCouples(count, [](Random& random, int) { return PN_IN_Couple{random.Name(), random.Name(), 0}; });
}

Couples OrdinaryNames(int count) {
  return MakeCouples(count, [](Random&, int row) { return Ordinary(row); });
}

// One long name throughout: every pair after the first goes to the end of one chain.
Couples OneName(int count) {
  Couples couples;
  for (int row = 1; row <= count; ++row) couples.push_back({"PART-00001", "PART-00001-LEFT-HAND.1", row});
  return couples;
}

void RenameThroughTheTable(const Couples& couples, const Ref<excel::Application>& excel) {
  const auto count = static_cast<std::int32_t>(couples.size());
  if (!Cls_HashTable().RenameDoublesWithHashTable(couples, count, excel)) throw std::runtime_error("not renamed");
}

struct Pair {
  std::string partNumber;
  std::string instanceName;

  bool operator==(const Pair&) const = default;
};

struct PairHash {
  std::size_t operator()(const Pair& pair) const {
    const std::hash<std::string> hash;
    return hash(pair.partNumber) * 31 + hash(pair.instanceName);
  }
};

void RenameThroughAMap(const Couples& couples, const Ref<excel::Application>& excel) {
  std::unordered_map<Pair, int, PairHash> rows(couples.size());
  const auto random = RandomFromClock();
  for (const auto& couple : couples) {
    if (rows.try_emplace({couple.PartNumber, couple.InstanceName}, couple.Row).second) continue;
    const auto cell = excel->ActiveWorkbook()->Worksheets()->Item(2)->Cells(couple.Row, 4);
    cell->SetNumberFormat("@");
    cell->SetValue(couple.InstanceName + TextOf(random() * 10000.0F));
  }
}

// The rows of repeats, and no others, have a longer name that begins with the old one.
void Check(const Couples& couples, const NewNames& names) {
  std::set<std::pair<std::string, std::string>> before;
  for (const auto& couple : couples) {
    const bool isRepeat = !before.emplace(couple.PartNumber, couple.InstanceName).second;
    const auto& name = names[static_cast<std::size_t>(int{couple.Row})];
    const bool isRenamed = name.size() > couple.InstanceName.size() && name.starts_with(couple.InstanceName);
    if (isRepeat ? !isRenamed : !name.empty()) throw std::runtime_error("row " + std::to_string(couple.Row));
  }
}

using Rename = void (*)(const Couples&, const Ref<excel::Application>&);

void Measure(benchmark::State& state, Rename rename, const Couples& couples) {
  NewNames names;
  for (auto _ : state) {
    names.assign(couples.size() + 1, {});
    const Ref<excel::Application> excel = MakeRef<Excel>(names);
    const auto start = std::chrono::steady_clock::now();
    rename(couples, excel);
    state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
  }
  Check(couples, names);
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(couples.size()));
}

void Register(const std::string& suffix, const Couples& couples) {
  for (const auto& [name, rename] :
       {std::pair<const char*, Rename>{"RenameDoubles/", RenameThroughTheTable}, {"StandardMap/", RenameThroughAMap}}) {
    benchmark::RegisterBenchmark(
        (name + suffix).c_str(),
        [couples, rename = rename](benchmark::State& state) { Measure(state, rename, couples); })
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
  }
}

}  // namespace
}  // namespace quintara::bench

int main(int argc, char** argv) {
  using namespace quintara;
  using namespace quintara::bench;
  InstallPlatform(std::make_shared<Desktop>());
  Register("random/many", RandomNames(kMany));
  Register("random/few", RandomNames(kFew));
  Register("ordinary/many", OrdinaryNames(kMany));
  Register("ordinary/few", OrdinaryNames(kFew));
  Register("one_name/many", OneName(kMany));
  return RunAndJudge(
      argc, argv,
      {{"Renaming, 15,000 random names", {"RenameDoubles/random/many"}, {"StandardMap/random/many"}, 5.0},
       {"Renaming, time for a couple, 15,000 over 3,750",
        {"RenameDoubles/random/many", "RenameDoubles/random/few"},
        {"StandardMap/random/many", "StandardMap/random/few"},
        1.3}});
}
