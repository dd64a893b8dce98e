#pragma once

#include <cstddef>
#include <string_view>
#include <tuple>
#include <type_traits>

/// The kinds of objects and their operations as automation names them: one table, by which a late-bound object of
/// another process is driven, and by which an object of this process is offered to others.
namespace quintara::automation {

/// A text as an argument of a template.
template <std::size_t Size>
struct Literal {
  char text[Size];
  consteval Literal(const char (&characters)[Size]) {
    for (std::size_t i = 0; i < Size; ++i) text[i] = characters[i];
  }
};

/// How an operation is asked for. Whether what gives a value is a method or a property is the host's own affair, and
/// every host takes either.
enum class Use { kCall, kPut };

/// One operation: its name, and the member of a contract that it is.
template <Literal NameText, auto MemberPointer, Use HowUsed = Use::kCall>
struct Operation {
  static constexpr std::string_view kName{NameText.text, sizeof NameText.text - 1};
  static constexpr auto kMember = MemberPointer;
  static constexpr Use kUse = HowUsed;
};
template <Literal NameText, auto MemberPointer>
using Call = Operation<NameText, MemberPointer, Use::kCall>;
template <Literal NameText, auto MemberPointer>
using Put = Operation<NameText, MemberPointer, Use::kPut>;

/// What a kind is: specialised for each contract, with `kName`, the name of its type, `Base`, the contract that it is
/// derived from, and `Operations`, a tuple of those that it adds.
template <class Contract>
struct Kind;

/// What most kinds have in common.
struct UsualKind {
  /// An operation by which an object of this kind is told from all others; empty where nobody needs to.
  static constexpr std::string_view kTelltale = {};
  /// All objects of the kind answer under the same ids, so that one of them speaks for all.
  static constexpr bool kSharesIds = true;
  /// An object of the kind may be of one that is derived from it, and has to be asked before it goes out.
  static constexpr bool kIsOpen = false;
};

template <class Pointer>
struct MemberClass;
template <class Class, class Type>
struct MemberClass<Type Class::*> {
  using Type_ = Class;
};
/// The contract that a member belongs to.
template <auto Member>
using ContractOf = typename MemberClass<decltype(Member)>::Type_;

template <auto Left, auto Right>
inline constexpr bool kIsSame =
    std::is_same_v<std::integral_constant<decltype(Left), Left>, std::integral_constant<decltype(Right), Right>>;

template <auto Member, class... Operations>
consteval auto FindOperation(std::tuple<Operations...> /*all*/) {
  if constexpr (sizeof...(Operations) > 0) {
    return []<class First, class... Rest>(std::tuple<First, Rest...>) {
      if constexpr (kIsSame<First::kMember, Member>) {
        return First{};
      } else {
        return FindOperation<Member>(std::tuple<Rest...>{});
      }
    }(std::tuple<Operations...>{});
  }
}

/// The operation that a member of a contract is.
template <auto Member>
using OperationOf = decltype(FindOperation<Member>(typename Kind<ContractOf<Member>>::Operations{}));

}  // namespace quintara::automation
