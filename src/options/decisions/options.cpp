#include "options/decisions/options.h"

#include <array>

namespace velmora {

namespace {

using Read = OptionField::Read;
using Written = OptionField::Written;

constexpr auto fields = std::to_array<OptionField>({
    {{"RunStartUp", &Options::RunStartUp}},
    {{"EmailCheckStartUp", &Options::EmailCheckStartUp}},
    {{"StartUpDelay", &Options::StartUpDelay}},
    {{"MinimizeStartUp", &Options::MinimizeStartUp}},
    {{"UseInterval", &Options::UseInterval}},
    {{"NoCheck", &Options::NoCheck}},
    {{"NoCheckTimeBegin", &Options::NoCheckTimeBegin}},
    {{"NoCheckTimeEnd", &Options::NoCheckTimeEnd}},
    {{"ShowEmailMsgBox", &Options::ShowEmailMsgBox}},
    {{"MsgBoxTime", &Options::MsgBoxTime}},
    {{"ShowEmail", &Options::ShowEmail}},
    {{"Hours", &Options::Hours}},
    {{"Minutes", &Options::Minutes}},
    {{"DefaultClient", &Options::DefaultClient}},
    {{"DefaultSound", &Options::DefaultSound}},
    {{"RunSize", &Options::RunSize}},
    {{"PlaySound", &Options::PlaySound}},
    {{"DTheme", &Options::DTheme}, Read::WithTheMenus},
    {{"TopColour", &Options::TopColour}, Read::WithTheMenus},
    {{"MiddleColour", &Options::MiddleColour}, Read::WithTheMenus},
    {{"BottomColour", &Options::BottomColour}, Read::WithTheMenus},
    {{"ShowNewOnly", &Options::ShowNewOnly}},
    {{"RestoreColWidth", &Options::RestoreColWidth}, Read::WithTheList},
    {{"ButtonStyle", &Options::ButtonStyle}},
    {{"ApplyStyle", &Options::ApplyStyle}},
    {{"FromToolTips", &Options::FromToolTips}},
    {{"ToToolTips", &Options::ToToolTips}},
    {{"SubjectToolTips", &Options::SubjectToolTips}},
    {{"MessageSort", &Options::MessageSort}},
    {{"SortColumn", &Options::SortColumn}},
    {{"SortColumnLastUsed", &Options::SortColumnLastUsed}, Read::AtStartUp, Written::Elsewhere},
    {{"SortOrder", &Options::SortOrder}},
    {{"CloseButton", &Options::CloseButton}},
    {{"QuickCheck", &Options::QuickCheck}},
    {{"DeleteConfirmation", &Options::DeleteConfirmation}},
    {{"SuppressConnectErrors", &Options::SuppressConnectErrors}},
    {{"SuppressRetrieveErrors", &Options::SuppressRetrieveErrors}},
    {{"ConnectTimeOut", &Options::ConnectTimeOut}},
    {{"NotifyNew", &Options::NotifyNew}},
    {{"NotifyFailures", &Options::NotifyFailures}},
    {{"FollowMachine", &Options::FollowMachine}},
    {{"KeepInterval", &Options::KeepInterval}},
    {{"UseKeyring", &Options::UseKeyring}},
    {{"RefuseUntrusted", &Options::RefuseUntrusted}},
    {{"ProtocolLog", &Options::ProtocolLog}, Read::Never, Written::Never},
    {{"RulesIniFileName", &Options::RulesIniFileName}, Read::AtStartUp, Written::Elsewhere},
});

SettingsPlace place() { return {optionsSection, ""}; }

}  // namespace

std::span<const OptionField> optionFields() { return fields; }

void loadOptions(const SettingsStore& store, Read moment, Options& options) {
  for (const auto& option : fields) {
    if (option.read == moment) loadField(store, place(), option.field, options);
  }
}

void takeOver(const Options& edited, Options& options) {
  for (const auto& option : fields) {
    if (option.isOfPage()) copyField(option.field, edited, options);
  }
}

void writeOptions(SettingsStore& store, const Options& options) {
  for (const auto& option : fields) {
    if (option.written == Written::ByTheSave) saveField(store, place(), option.field, options);
  }
}

}  // namespace velmora
