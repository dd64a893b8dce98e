#include <span>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "automation/dispatch/kinds_control.h"
#include "automation/dispatch/late_bound.h"
#include "automation/dispatch/served_kind.h"

namespace quintara::automation {
namespace {

// How arguments come in.
template <class T>
struct Argument {
  explicit Argument(const VARIANT& raw) : value(Read(raw)) {}
  static T Read(const VARIANT& raw) {
    const auto given = ToVariant(raw, nullptr);
    if constexpr (std::is_same_v<T, Variant>) return given;
    if constexpr (std::is_same_v<T, bool>) return given.ToBoolean();
    if constexpr (std::is_same_v<T, std::int16_t>) return given.ToInteger16();
    if constexpr (std::is_same_v<T, std::int32_t>) return given.ToInteger32();
    if constexpr (std::is_same_v<T, std::string>) return given.ToText();
  }
  const T& Get() const { return value; }
  T value;
};
template <class Contract>
struct Argument<Ref<Contract>> {
  explicit Argument(const VARIANT& raw) : value(Adapt<Contract>(ObjectIn(raw), nullptr)) {}
  const Ref<Contract>& Get() const { return value; }
  Ref<Contract> value;
};
template <>
struct Argument<std::vector<std::string>> {
  explicit Argument(const VARIANT& raw) : value(TextsIn(raw)) {}
  const std::vector<std::string>& Get() const { return value; }
  std::vector<std::string> value;
};
template <>
struct Argument<std::span<const double>> {
  explicit Argument(const VARIANT& raw) : value(NumbersIn(raw)) {}
  std::span<const double> Get() const { return value; }
  std::vector<double> value;
};
// Filled in place: what the array holds is written back.
template <>
struct Argument<std::span<double>> {
  explicit Argument(const VARIANT& given) : raw(given), value(NumbersIn(given)) {}
  std::span<double> Get() { return value; }
  void WriteBack() const { WriteNumbers(raw, value); }
  const VARIANT& raw;
  std::vector<double> value;
};

template <auto Member>
struct Runner;
template <class Contract, class Given, class... Taken, Given (Contract::*Member)(Taken...)>
struct Runner<Member> {
  using Result = Given;
  static constexpr std::size_t kArity = sizeof...(Taken);

  static Value Run(AnyObject& object, std::span<const VARIANT> arguments) {
    return RunWith(static_cast<Contract&>(object), arguments, std::index_sequence_for<Taken...>{});
  }

 private:
  template <std::size_t... Indices>
  static Value RunWith(Contract& object, [[maybe_unused]] std::span<const VARIANT> arguments,
                       std::index_sequence<Indices...> /*indices*/) {
    std::tuple<Argument<std::remove_cvref_t<Taken>>...> taken{arguments[Indices]...};
    if constexpr (std::is_void_v<Given>) {
      (object.*Member)(std::get<Indices>(taken).Get()...);
      (WriteBack(std::get<Indices>(taken)), ...);
      return Value();
    } else {
      return Encode((object.*Member)(std::get<Indices>(taken).Get()...));
    }
  }
  template <class T>
  static void WriteBack(const Argument<T>& argument) {
    if constexpr (requires { argument.WriteBack(); }) argument.WriteBack();
  }
};

template <class Given>
struct KindGiven {
  static constexpr const ServedKind& (*kKind)() = nullptr;
};
template <class Contract>
struct KindGiven<Ref<Contract>> {
  static constexpr const ServedKind& (*kKind)() = KindServed<Contract>;
};

template <class Operation>
ServedOperation Served() {
  using Member = Runner<Operation::kMember>;
  using Given = typename Member::Result;
  return {Operation::kName, Operation::kUse,         Member::kArity,
          Member::Run,      KindGiven<Given>::kKind, !std::is_void_v<Given>};
}

template <class... Operations>
void AddOperations(std::vector<ServedOperation>& all, std::tuple<Operations...> /*added*/) {
  (all.push_back(Served<Operations>()), ...);
}

template <class Contract>
std::vector<ServedOperation> AllOperations() {
  std::vector<ServedOperation> all;
  if constexpr (!std::is_void_v<typename Kind<Contract>::Base>) all = AllOperations<typename Kind<Contract>::Base>();
  AddOperations(all, typename Kind<Contract>::Operations{});
  return all;
}

}  // namespace

template <class Contract>
const ServedKind& KindServed() {
  static const ServedKind kind(Kind<Contract>::kName, Kind<Contract>::kIsOpen, AllOperations<Contract>());
  return kind;
}

template const ServedKind& KindServed<AnyObject>();
template const ServedKind& KindServed<FileSystemObject>();
template const ServedKind& KindServed<HostsControl>();
template const ServedKind& KindServed<zorva::Collection>();
template const ServedKind& KindServed<zorva::Application>();
template const ServedKind& KindServed<zorva::Window>();
template const ServedKind& KindServed<zorva::Viewer>();
template const ServedKind& KindServed<zorva::Documents>();
template const ServedKind& KindServed<zorva::Document>();
template const ServedKind& KindServed<zorva::ProductDocument>();
template const ServedKind& KindServed<zorva::Product>();
template const ServedKind& KindServed<zorva::Products>();
template const ServedKind& KindServed<zorva::Position>();
template const ServedKind& KindServed<zorva::Parameters>();
template const ServedKind& KindServed<zorva::Parameter>();
template const ServedKind& KindServed<zorva::Selection>();
template const ServedKind& KindServed<zorva::SelectedElement>();
template const ServedKind& KindServed<zorva::ScriptService>();
template const ServedKind& KindServed<excel::Application>();
template const ServedKind& KindServed<excel::Workbooks>();
template const ServedKind& KindServed<excel::Workbook>();
template const ServedKind& KindServed<excel::Worksheets>();
template const ServedKind& KindServed<excel::Worksheet>();
template const ServedKind& KindServed<excel::Range>();
template const ServedKind& KindServed<veldora::VdAttribute>();
template const ServedKind& KindServed<veldora::VdAttributes>();
template const ServedKind& KindServed<veldora::VdClass>();
template const ServedKind& KindServed<veldora::VdClasses>();
template const ServedKind& KindServed<veldora::VdOperation>();
template const ServedKind& KindServed<veldora::VdOperations>();
template const ServedKind& KindServed<veldora::VdMetaInfo>();
template const ServedKind& KindServed<veldora::VdColumn>();
template const ServedKind& KindServed<veldora::VdColumns>();
template const ServedKind& KindServed<veldora::VdRecord>();
template const ServedKind& KindServed<veldora::VdRecList>();
template const ServedKind& KindServed<veldora::VdBehavior>();
template const ServedKind& KindServed<veldora::VdObject>();
template const ServedKind& KindServed<veldora::VdObjects>();
template const ServedKind& KindServed<veldora::VdQueryFrom>();
template const ServedKind& KindServed<veldora::VdQuerySelect>();
template const ServedKind& KindServed<veldora::VdQueryWhere>();
template const ServedKind& KindServed<veldora::VdQueryDefinition>();
template const ServedKind& KindServed<veldora::VdQuery>();
template const ServedKind& KindServed<veldora::VdAliasResults>();
template const ServedKind& KindServed<veldora::VdMask>();
template const ServedKind& KindServed<veldora::VdMasks>();
template const ServedKind& KindServed<veldora::VdObjectStore>();
template const ServedKind& KindServed<veldora::VdDatabase>();
template const ServedKind& KindServed<veldora::VdUserInfo>();
template const ServedKind& KindServed<veldora::VdConfig>();
template const ServedKind& KindServed<veldora::VdAuthorizations>();
template const ServedKind& KindServed<veldora::VdSession>();
template const ServedKind& KindServed<veldora::VdEngine>();
template const ServedKind& KindServed<veldora::VdApplication>();
template const ServedKind& KindServed<veldora::VdSessionUtil>();
template const ServedKind& KindServed<veldora::VdClientPaths>();
template const ServedKind& KindServed<veldora::VdServiceContext>();
template const ServedKind& KindServed<veldora::VdClientContextService>();
template const ServedKind& KindServed<veldora::VdDialogInput>();
template const ServedKind& KindServed<veldora::VdDialogOutput>();
template const ServedKind& KindServed<veldora::VdDialogWindow>();
template const ServedKind& KindServed<veldora::VdDialog>();
template const ServedKind& KindServed<veldora::VdDialogs>();
template const ServedKind& KindServed<veldora::VdCommonGUI>();
template const ServedKind& KindServed<veldora::VdGUIServices>();
template const ServedKind& KindServed<veldora::VdConfigProvider>();
template const ServedKind& KindServed<veldora::VdClientContext>();
template const ServedKind& KindServed<veldora::VdTranslator>();
template const ServedKind& KindServed<veldora::HIXDocument>();
template const ServedKind& KindServed<veldora::HIXEngine>();

}  // namespace quintara::automation
