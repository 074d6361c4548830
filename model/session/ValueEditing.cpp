#include "model/session/ValueEditing.h"

#include <utility>

#include "core/files/Paths.h"
#include "core/text/LeadingNumber.h"
#include "core/text/MissingValueMarker.h"
#include "core/text/Unicode.h"
#include "model/program/StringTable.h"

namespace tamarind {
namespace {

constexpr std::string_view kCommanderPath = "%COMMANDER_PATH%";
constexpr std::int64_t kNormalWeight = 400;
constexpr std::int64_t kBoldFrom = 600;
constexpr std::int64_t kBoldWeight = 700;

std::string WithoutQuotes(std::string_view text) {
    const bool isQuoted = text.size() > 1 && text.starts_with('"');
    return std::string(isQuoted ? text.substr(1, text.find('"', 1) - 1) : text);
}

bool IsDrivePath(std::string_view path) {
    constexpr std::size_t kRoot = 3;
    return path.size() >= kRoot && path[1] == ':' && path[2] == '\\';
}

bool StartsWithFolder(std::string_view path, std::string_view folder) {
    return path.size() > folder.size() && EqualsIgnoreCase(path.substr(0, folder.size()), folder);
}

}  // namespace

std::string ValueEditing::ValueInForce(KeyNumber key) const {
    const KeyRecord record = m_store.Record(key);
    return std::string(record.Looks().isGhosted ? record.defaultValue
                                                : record.currentValue.value_or(""));
}

std::optional<ValueField> ValueEditing::Field() const {
    const auto key = Key();
    if (!key) {
        return std::nullopt;
    }
    const ValueType type = m_values.TypeOf(*key);
    ValueField field;
    field.key = *key;
    field.name = m_store.KeyName(*key);
    field.state = m_values.StateOf(*key);
    field.text = m_values.Labeled(*key, ValueInForce(*key));
    field.unit = m_values.UnitOf(*key);
    field.defaultValue = m_values.DefaultOf(*key);
    field.choices = m_values.ChoicesFor(*key);
    field.isSum = type.kind == ValueKind::Flags;
    field.isNumber = type.kind == ValueKind::Int;
    field.hasDialog = type.kind == ValueKind::Font || type.kind == ValueKind::Path;
    field.isReadOnly = !m_store.CanEditValue(*key);
    field.color = m_values.ColorOf(*key);
    return field;
}

std::string ValueEditing::ObjectionTo(const std::string& text) const {
    const auto key = Key();
    return key ? m_values.ObjectionTo(*key, m_values.ValueMeantBy(*key, text)) : std::string();
}

bool ValueEditing::NamesMissingPlace(const std::string& text) const {
    const auto key = Key();
    const ValueType type = key ? m_values.TypeOf(*key) : ValueType();
    const std::string path = Expanded(WithoutQuotes(text));
    // Without a drive it is in the network, a command of Total Commander, or depends on a folder.
    if (type.kind != ValueKind::Path || !IsDrivePath(path)) {
        return false;
    }
    // A command may have parameters behind it.
    std::size_t end = path.size();
    while (end != std::string::npos) {
        if (m_workplace.Disk().Exists(path.substr(0, end))) {
            return false;
        }
        end = type.path == PathKind::Command && end > 0 ? path.rfind(' ', end - 1)
                                                        : std::string::npos;
    }
    return true;
}

std::optional<ColorSample> ValueEditing::ColorOf(const std::string& text) const {
    const auto key = Key();
    if (!key || !m_values.ColorOf(*key)) {
        return std::nullopt;
    }
    const auto color = ParseColor(m_values.ValueMeantBy(*key, text));
    return ColorSample{!color, color.value_or(0)};
}

std::string ValueEditing::Stepped(const std::string& text, int steps) const {
    const auto key = Key();
    return key ? tamarind::Stepped(m_values.TypeOf(*key), m_values.ValueMeantBy(*key, text), steps)
               : text;
}

bool ValueEditing::IsChecked(const std::string& text, std::size_t choice) const {
    const auto key = Key();
    const auto choices = key ? m_values.ChoicesFor(*key) : std::vector<LabeledChoice>();
    return choice < choices.size() && HasBits(m_values.TypeOf(*key), text, choices[choice].value);
}

std::string ValueEditing::Toggled(const std::string& text, std::size_t choice) const {
    const auto key = Key();
    const auto choices = key ? m_values.ChoicesFor(*key) : std::vector<LabeledChoice>();
    return choice < choices.size()
               ? WithBitsToggled(m_values.TypeOf(*key), text, choices[choice].value)
               : text;
}

std::string ValueEditing::OtherBitsOf(const std::string& text) const {
    const auto key = Key();
    const auto others = key ? OtherBits(m_values.TypeOf(*key), text) : 0;
    return others == 0 ? std::string()
                       : m_workplace.Text(text::kOtherBits, {std::to_string(others)});
}

bool ValueEditing::Store(const std::string& text) {
    const auto key = Key();
    return key && m_commands.SetValue(m_values.ValueMeantBy(*key, text));
}

bool ValueEditing::Choose(std::size_t choice) {
    const auto key = Key();
    const auto choices = key ? m_values.ChoicesFor(*key) : std::vector<LabeledChoice>();
    if (choice >= choices.size()) {
        return false;
    }
    return choices[choice].value.empty() ? m_commands.Unset()
                                         : m_commands.SetValue(choices[choice].value);
}

bool ValueEditing::IsSwitch() const {
    const auto key = Key();
    return key && m_values.TypeOf(*key).kind == ValueKind::Bool;
}

bool ValueEditing::ToggleSwitch() {
    return IsSwitch() && m_commands.SetValue(ValueInForce(*Key()) == "1" ? "0" : "1");
}

ChoosingWay ValueEditing::WayToChoose() const {
    const auto key = Key();
    if (!key || !m_values.HasEntry(*key)) {
        return ChoosingWay::Dialog;
    }
    switch (m_values.TypeOf(*key).kind) {
        case ValueKind::Color:
        case ValueKind::Font:
        case ValueKind::Path:
            return ChoosingWay::Dialog;
        default:
            return m_values.ChoicesFor(*key).empty() ? ChoosingWay::Text : ChoosingWay::DropDown;
    }
}

bool ValueEditing::Browse() {
    if (!m_commands.CanEditValue()) {
        return false;
    }
    const KeyNumber key = *Key();
    if (m_values.ColorOf(key)) {
        return BrowseColor(key);
    }
    const ValueType type = m_values.HasEntry(key) ? m_values.TypeOf(key) : ValueType();
    if (type.kind == ValueKind::Font) {
        return BrowseFont(key, type);
    }
    if (type.kind == ValueKind::Path) {
        return BrowsePath(key, type);
    }
    const std::string value = m_workplace.Prompts().BrowseForOpen({});
    return value != MissingValueMarker && m_commands.SetValue(value);
}

bool ValueEditing::BrowseColor(KeyNumber key) {
    UserPrompts& prompts = m_workplace.Prompts();
    const auto sample = m_values.ColorOf(key);
    if (sample && !sample->isSystemColor) {
        prompts.StartColorAt(static_cast<std::int32_t>(sample->color));
    }
    const std::string value = prompts.ColorSelect();
    if (value == MissingValueMarker) {
        return false;
    }
    return m_commands.SetValue(m_values.HasEntry(key) ? m_values.ValueMeantBy(key, value) : value);
}

// A key of the same section.
std::optional<KeyNumber> ValueEditing::Neighbour(KeyNumber key, const std::string& name) const {
    for (KeyNumber other = 1; other <= m_store.Size(); ++other) {
        if (EqualsIgnoreCase(m_store.KeyName(other), name) &&
            EqualsIgnoreCase(m_store.TargetSection(other), m_store.TargetSection(key))) {
            return other;
        }
    }
    return std::nullopt;
}

// A weight that is as bold as the chosen one stays: the dialog knows no more than two.
bool ValueEditing::BrowseFont(KeyNumber key, const ValueType& type) {
    enum Part : std::size_t { kSize, kWeight, kCharset, kParts };
    std::optional<KeyNumber> parts[kParts];
    std::int64_t numbers[kParts] = {0, kNormalWeight, 1};
    for (std::size_t part = 0; part < kParts && part < type.companions.size(); ++part) {
        parts[part] = Neighbour(key, type.companions[part]);
        if (parts[part]) {
            numbers[part] = WholeNumber(ValueInForce(*parts[part])).value_or(numbers[part]);
        }
    }
    const bool wasBold = numbers[kWeight] >= kBoldFrom;
    FontChoice font = {ValueInForce(key), static_cast<std::int32_t>(numbers[kSize]),
                       wasBold ? 1 : 0, static_cast<std::int32_t>(numbers[kCharset])};
    if (!m_workplace.Prompts().FontSelect(font)) {
        return false;
    }
    const bool isBold = (font.style & 1) != 0;
    const std::int64_t weight = isBold == wasBold ? numbers[kWeight]
                                : isBold          ? kBoldWeight
                                                  : kNormalWeight;
    const std::int64_t chosen[kParts] = {font.points, weight, font.charset};
    std::vector<KeyChange> changes = {{key, KeyState::ValueSet, font.name}};
    for (std::size_t part = 0; part < kParts; ++part) {
        if (parts[part] && chosen[part] != numbers[part]) {
            changes.push_back({*parts[part], KeyState::ValueSet, std::to_string(chosen[part])});
        }
    }
    m_commands.SetValues(changes);
    return true;
}

// With a closing backslash; empty if it is not known.
std::string ValueEditing::CommanderFolder() const {
    std::string folder = m_workplace.Services().environment.Variable("COMMANDER_PATH");
    if (folder.empty()) {
        folder = m_workplace.OwnSettings().Values().totalCommanderFolder;
    }
    return folder.empty() ? folder : AddBackslash(folder);
}

std::string ValueEditing::Expanded(const std::string& path) const {
    const std::string folder = CommanderFolder();
    const std::string_view start = std::string_view(path).substr(0, kCommanderPath.size());
    return !folder.empty() && EqualsIgnoreCase(start, kCommanderPath)
               ? folder.substr(0, folder.size() - 1) + path.substr(kCommanderPath.size())
               : ExpandPathVariables(path, m_workplace.Services().environment);
}

// A path below Total Commander's folder can begin with its variable; nothing if the user cancels.
std::optional<std::string> ValueEditing::AskForForm(const std::string& path) const {
    const std::string folder = CommanderFolder();
    if (folder.empty() || !StartsWithFolder(path, folder)) {
        return path;
    }
    const std::string other = std::string(kCommanderPath) + path.substr(folder.size() - 1);
    switch (m_workplace.Prompts().Ask(m_workplace.Text(text::kAskVariablePath, {other}))) {
        case Answer::Yes:
            return other;
        case Answer::No:
            return path;
        default:
            return std::nullopt;
    }
}

bool ValueEditing::BrowsePath(KeyNumber key, const ValueType& type) {
    UserPrompts& prompts = m_workplace.Prompts();
    const std::string present = Expanded(WithoutQuotes(ValueInForce(key)));
    const bool isPlace = IsAbsolutePath(present);
    std::string path;
    if (type.path == PathKind::Folder) {
        path = prompts.BrowseForFolder(isPlace ? present : CommanderFolder());
    } else {
        FileQuestion question;
        question.initialFolder = isPlace ? std::string(FolderOfPath(present)) : CommanderFolder();
        question.fileName = FileNameOfPath(present);
        question.filter =
            type.path == PathKind::File ? FileFilter::AllFiles : FileFilter::AllFilesAndPrograms;
        question.pattern = type.pattern;
        path = prompts.BrowseForOpen(question);
    }
    const auto chosen = path == MissingValueMarker ? std::nullopt : AskForForm(path);
    if (!chosen) {
        return false;
    }
    const bool needsQuotes =
        type.path == PathKind::Command && chosen->find(' ') != std::string::npos;
    return m_commands.SetValue(needsQuotes ? "\"" + *chosen + "\"" : *chosen);
}

}  // namespace tamarind
