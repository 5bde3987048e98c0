// Loading, refreshing and saving the seven settings.
#include "settings/agent_settings.h"

#include <QByteArray>
#include <QString>
#include <cstring>

#include "settings/registry_client.h"

AgentSettings agent_settings;

namespace {

struct SettingRow {
  const char *name;
  const char *default_text;  // null: stays absent
};

// To add a setting, add its row here and its name to the enumeration.
constexpr std::array<SettingRow, kSettingCount> kSettings{{
    {"CurrentGateway", nullptr},
    {"BackupGateway", nullptr},
    {"Interval_min", "1440"},
    {"LogLevel", "0"},
    {"DelayScope_min", "0"},
    {"GetGroupsFromDHCP", "1"},
    {"PreAssignGroups", nullptr},
}};
constexpr char kBranch[] = "root/vexa/agent/";

int refresh_holds = 0;
SettingTexts loaded_settings;  // as read at start; never changed afterwards

QString FromBytes(const char *bytes) {
  return QString::fromLatin1(bytes, static_cast<int>(std::strlen(bytes)));
}

HeapText ToBytes(const QString &text) {
  return HeapText::Copy(text.toLatin1().constData());
}

QString KeyOf(const SettingRow &setting) {
  return FromBytes(kBranch) + FromBytes(setting.name);
}

// A text that cannot be passed counts as a failed write, which is silent like every other.
void SaveSetting(const RegistryClient &registry, const SettingRow &setting, const char *text) {
  if (std::strchr(text, '\'') == nullptr) {
    registry.SetValue(KeyOf(setting), FromBytes(text));
  }
}

}  // namespace

void LoadSettings() {
  const RegistryClient registry;
  for (std::size_t i = 0; i < kSettings.size(); ++i) {
    QString value;  // stays empty when nothing is found
    registry.GetValue(KeyOf(kSettings[i]), value);
    loaded_settings[i] = ToBytes(value);
  }
  FillSettings(agent_settings, loaded_settings);
}

void FillSettings(AgentSettings &settings, const SettingTexts &loaded) {
  for (std::size_t i = 0; i < kSettings.size(); ++i) {
    settings.texts[i] = HeapText::Copy(loaded[i] ? loaded[i].Get() : kSettings[i].default_text);
  }
}

void SaveSettings() {
  const RegistryClient registry;
  for (std::size_t i = 0; i < kSettings.size(); ++i) {
    SaveSetting(registry, kSettings[i], agent_settings.texts[i].OrEmpty());
  }
  registry.Commit();
}

void RefreshCurrentGateway() {
  const RegistryClient registry;
  QString gateway;
  if (registry.GetValue(KeyOf(kSettings[CurrentGateway]), gateway) && refresh_holds == 0) {
    agent_settings[CurrentGateway] = ToBytes(gateway);
  }
}

RefreshHold::RefreshHold() {
  ++refresh_holds;
}

RefreshHold::~RefreshHold() {
  --refresh_holds;
}

void FreeSettings() {
  for (HeapText &text : agent_settings.texts) {
    text.Reset();
  }
}
