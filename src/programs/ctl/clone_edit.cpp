#include "programs/ctl/clone_edit.h"

#include <algorithm>
#include <map>

#include "base/hex.h"
#include "base/plain_text.h"
#include "programs/ctl/clone_json.h"

namespace q40 {
namespace {

class Editor {
 public:
  Editor(CloneData& data, Edits& edits) : data_(data), edits_(edits) {}

  void Edit(const NamedValues& values) {
    std::map<Unit, NamedValues> channels;
    for (const Named& named : values) {
      switch (named.item->kind) {
        case ItemKind::kSetting: Setting(named); break;
        case ItemKind::kDialText: DialText(named); break;
        case ItemKind::kInUse:
        case ItemKind::kField:
        case ItemKind::kStoredData: channels[named.item->unit].push_back(named); break;
        default: ++edits_.applied; break;
      }
    }
    for (const auto& [unit, named] : channels) Channel(unit, named);
  }

 private:
  void Refuse(const Named& named, const std::string& why) {
    edits_.notes.push_back(named.Where() + ": " + ValueText(*named.value) + ' ' + why);
  }

  void Setting(const Named& named) {
    const q40::Setting& setting = Settings()[named.item->index];
    const Choices choices = Choices::Of(setting);
    const auto code = choices.CodeOf(*named.value);
    if (!code) return Refuse(named, choices.WhyNot(*named.value));
    data_.settings.*setting.value = *code;
    edits_.settings.insert(named.item->index);
    ++edits_.applied;
  }

  void DialText(const Named& named) {
    std::string& text = data_.dial[named.item->index];
    const auto bytes = BytesOf(*named.value);
    if (!bytes) return Refuse(named, "holds characters that no clone file can");
    if (*bytes != text) {
      const std::string typed = UpperCase(*bytes);
      const std::string why = WhyNotDialText(typed, static_cast<int>(named.item->index));
      if (!why.empty()) return Refuse(named, why);
      text = typed;
    }
    ++edits_.applied;
  }

  void Channel(Unit unit, const NamedValues& values) {
    const auto is = [](ItemKind kind) {
      return [kind](const Named& named) { return named.item->kind == kind; };
    };
    const auto in_use = std::find_if(values.begin(), values.end(), is(ItemKind::kInUse));
    const bool stored = std::any_of(values.begin(), values.end(), is(ItemKind::kStoredData));
    if (in_use != values.end() && !in_use->value->get<bool>()) {
      if (!stored || InUse(data_.image, PlaceOf(unit))) {
        edits_.channels.insert(unit);
        ClearRecord(data_.image, PlaceOf(unit));
      }
      for (const Named& named : values) {
        if (named.item->kind == ItemKind::kField) Refuse(named, "is for a channel in use only");
      }
      ++edits_.applied;
      return;
    }
    if (stored) ++edits_.applied;
    const bool has_fields = std::any_of(values.begin(), values.end(), is(ItemKind::kField));
    if (has_fields || in_use != values.end()) Fields(unit, values);
  }

  // As OK in the edit dialog: the channel is in use afterwards.
  void Fields(Unit unit, const NamedValues& values) {
    const EditedChannel channel = EditedChannelOf(data_.image, data_.model, PlaceOf(unit));
    ChannelRecord record = *channel.base;
    const auto notes = edits_.notes.size();
    int fitted = 0;
    for (const Named& named : values) {
      if (named.item->kind == ItemKind::kInUse) ++fitted;
      if (named.item->kind != ItemKind::kField) continue;
      if (FieldFits(named, channel, record)) {
        ++fitted;
      } else if (!channel.in_use && named.item->field == Field::kFrequency) {
        edits_.notes.back() += "; the channel stays empty";
        edits_.notes.erase(edits_.notes.begin() + static_cast<std::ptrdiff_t>(notes),
                           edits_.notes.end() - 1);
        return;
      }
    }
    if (unit.kind() == Unit::Kind::kSpecial && unit.index() >= kPhRow && record.Frequency() == 0) {
      edits_.notes.push_back(PointerTo(values.front().item->place, "Frequency") +
                             ": a PH or PL without one is absent; left as it was");
      return;
    }
    edits_.applied += fitted;
    if (fitted == 0) return;
    edits_.channels.insert(unit);
    PutRecord(data_.image, channel.place, std::move(record));
  }

  // Takes a value into the record; false, and a note, when it does not fit.
  bool FieldFits(const Named& named, const EditedChannel& channel, ChannelRecord& record) {
    const Field field = named.item->field;
    ChannelRecord changed = record;
    std::string why = SetField(channel.place.kind, field, *named.value, changed);
    if (why.empty()) why = WhyNotField(changed, field, channel);
    if (!why.empty()) {
      Refuse(named, why);
      return false;
    }
    record = std::move(changed);
    return true;
  }

  static std::string SetField(ChannelKind kind, Field field, const Json& value,
                              ChannelRecord& record) {
    if (field == Field::kFrequency || field == Field::kShiftFrequency) {
      const auto mhz = MhzOf(value);
      if (!mhz) return "is no frequency in steps of 0.0001 MHz up to 9999.9999";
      record.Set(kind, field, *mhz, FrequencyText(*mhz));
      return {};
    }
    if (field == Field::kName) {
      const auto bytes = BytesOf(value);
      if (!bytes) return "holds characters that no name can have";
      const std::string name = *bytes == record.Text(kind, field) ? *bytes : UpperCase(*bytes);
      record.Set(kind, field, name.empty() ? 0 : 1, name);
      return {};
    }
    const Choices& choices = Choices::Of(field);
    const auto code = choices.CodeOf(value);
    if (!code) return choices.WhyNot(value);
    SetCode(record, kind, field, *code);
    return {};
  }

  CloneData& data_;
  Edits& edits_;
};

}  // namespace

Edits EditValues(const NamedValues& values, CloneData& data) {
  Edits edits;
  Editor(data, edits).Edit(values);
  return edits;
}

}  // namespace q40
