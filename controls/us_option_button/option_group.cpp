#include "controls/us_option_button/option_group.h"

#include <vector>

#include "contract/us_option_button.h"
#include "services/late_object_win.h"

namespace kestrelon {
namespace {

bool same_object(IDispatch* a, IDispatch* b) {
  return query<IUnknown>(a).get() == query<IUnknown>(b).get();
}

/// One member of `Controls`; what it cannot tell has no value.
class Member {
 public:
  explicit Member(LateObject object) : object_(std::move(object)) {}

  LateObject container() {
    return ask(LateObject(), [&] { return object_.get_object(L"Container"); });
  }
  long window() {
    return ask(0L, [&] { return static_cast<long>(number_of(object_.get_property(L"hWnd"))); });
  }
  bool chosen() {
    return ask(false, [&] {
      Variant value = object_.get_property(L"Value");
      return value.change(VT_BOOL) && V_BOOL(&value) != VARIANT_FALSE;
    });
  }
  bool is_option_button() const { return static_cast<bool>(query<_USOptionButton>(object_.get())); }
  void clear() {
    ask(0, [&] { return object_.put_property(L"Value", Variant(false)), 0; });
  }

 private:
  template <class T, class Question>
  static T ask(T otherwise, Question question) {
    try {
      return question();
    } catch (const ComError&) {
      return otherwise;
    }
  }
  LateObject object_;
};

// A list of its own: a handler may add or remove controls on the way.
std::vector<Member> members(LateObject& parent) {
  std::vector<Member> out;
  const Variant listed = parent.get_object(L"Controls").get_property(DISPID_NEWENUM);
  const auto list = query<IEnumVARIANT>(
      V_VT(&listed) == VT_UNKNOWN || V_VT(&listed) == VT_DISPATCH ? V_UNKNOWN(&listed) : nullptr);
  if (!list) return out;
  Variant next;
  while (list->Next(1, next.put(), nullptr) == S_OK)
    if (LateObject object = object_of(next)) out.emplace_back(std::move(object));
  return out;
}

}  // namespace

void clear_option_group(const ComPtr<IDispatch>& extender, long own_window) {
  if (!extender) return;
  try {
    LateObject parent = LateObject(extender).get_object(L"Parent");
    std::vector<Member> all = members(parent);
    LateObject group = parent;
    for (Member& member : all) {
      LateObject container = member.container();
      if (!container || same_object(container.get(), parent.get())) continue;
      if (member.window() != own_window) continue;
      group = container;
      break;
    }
    for (Member& member : all) {
      if (!member.is_option_button() || member.window() == own_window || !member.chosen()) continue;
      if (same_object(member.container().get(), group.get())) member.clear();
    }
  } catch (const ComError&) {
    // A host without Parent or Controls has no groups.
  }
}

}  // namespace kestrelon
