#include "options/decisions/ini_file.h"

#include <gmock/gmock.h>

#include "support/test_platform.h"

namespace velmora {
namespace {

class Profiles : public testing::Test {
 protected:
  std::string get(const std::string& content, const std::string& section, const std::string& key) {
    platform.written["p"] = content;
    return IniFile(platform, "p").KeyGet(section, key, "none");
  }
  std::string save(const std::string& content, const std::string& value, const std::string& section,
                   const std::string& key) {
    platform.written["p"] = content;
    IniFile(platform, "p").KeySave(value, section, key);
    return platform.written["p"];
  }

  test::TestPlatform platform;
};

TEST_F(Profiles, AreReadWhateverTheyHold) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "none"},
      {"\xEF\xBB\xBF[S]\r\nK = v \r\n", "v"},
      {" [ s ] ; here\n\tK\t=\tv\t\n", "v"},
      {"[s]\n\vk=\vv\f\n", "v"},
      {"[s]\nk=\n", ""},
      {"k=w\n[t]\nk=x\n[s]\nk=v\n[s]\nk=y\nl=z\n", "v"},
      {"[s]\n[t]\n[s]\nk=v\n", "none"},
      {"[s]\n;k=w\n  ; k=w\nk\nk=v\nk=w\n", "v"},
      {"[s\nk=w\n[s]\nk=v\n", "v"},
      {"[s]\nk=a=b=\n", "a=b="},
      {"[s]\nk=\"  v  \"\n", "  v  "},
      {"[s]\nk='v'\n", "v"},
      {"[s]\nk=\"v'\n", "\"v'"},
      {"[s]\nk=\"\n", "\""},
      {"[s]\nk=\"\"v\"\"\n", "\"v\""},
      {"[S\xC3\x84]\nk=w\n[s]\nk=v\n", "v"},
  };
  for (const auto& [content, value] : cases) EXPECT_EQ(get(content, "s", "k"), value) << content;
  EXPECT_EQ(get("[SÄ]\nÖ=v\n", "sä", "ö"), "v");
  EXPECT_EQ(get(std::string("[s]\nk=a\0b\n", 11), "s", "k"), std::string("a\0b", 3));
}

TEST_F(Profiles, LongValuesComeBackUpToTheBuffer) {
  std::string umlauts;
  for (int i = 0; i < 3000; ++i) umlauts += "ü";
  EXPECT_EQ(get("[s]\nk=" + umlauts, "s", "k"), umlauts.substr(0, 2 * std::size_t{2047})) << "characters, not bytes";
}

TEST_F(Profiles, AWriteKeepsEveryOtherLine) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "[s]\nk=v\n"},
      {"\xEF\xBB\xBF", "\xEF\xBB\xBF[s]\nk=v\n"},
      {"[s]", "[s]\nk=v\n"},
      {"[t]\r\na=1", "[t]\r\na=1\r\n[s]\r\nk=v\r\n"},
      {"; c\n\n[ S ]\n K = \"w\" \nl=1\n[t]\nk=2", "; c\n\n[ S ]\n K =v\nl=1\n[t]\nk=2"},
      {"[s]\nl=1\n\n\n[t]\n", "[s]\nl=1\nk=v\n\n\n[t]\n"},
      {"[s]\nk=w\nk=x\n[s]\nk=y\n", "[s]\nk=v\nk=x\n[s]\nk=y\n"},
      {"[s]\r\nk=w", "[s]\r\nk=v"},
      {"[s]\n;k=w\nrubbish\n", "[s]\n;k=w\nrubbish\nk=v\n"},
      {"[t]\na=1\r\n", "[t]\na=1\r\n[s]\nk=v\n"},
  };
  for (const auto& [before, after] : cases) EXPECT_EQ(save(before, "v", "s", "k"), after) << before;
  EXPECT_EQ(save("[s]\n", std::string("a\r\n[t]\nk=w\0x", 12), "s", "k"), "[s]\nk=a  [t] k=w x\n");
  EXPECT_EQ(save("", "v", "s\n[t]", "k\nx"), "[s [t]]\nk x=v\n");
  EXPECT_EQ(save("", "v", "a]b", "k"), "[a]b]\nk=v\n");
}

TEST_F(Profiles, AFileThatCannotBeReadIsLeftAlone) {
  platform.files.insert("p");
  IniFile file(platform, "p");
  EXPECT_EQ(file.KeyGet("s", "k", "none"), "none");
  file.KeySave("v", "s", "k");
  file.StartAnew();
  file.KeySave("v", "s", "k");
  file.ConfigName("q");
  EXPECT_TRUE(platform.written.empty());
}

TEST_F(Profiles, ARunThatFailsOrGrowsTooLargeLeavesTheFileAlone) {
  platform.written["p"] = "[s]\n";
  try {
    IniFile file(platform, "p");
    file.KeySave("v", "s", "k");
    throw std::runtime_error("in the middle");
  } catch (const std::runtime_error&) {
  }
  EXPECT_EQ(platform.written["p"], "[s]\n");
  IniFile(platform, "p").KeySave(std::string(largestReadFile, 'v'), "s", "k");
  EXPECT_EQ(platform.written["p"], "[s]\n");
}

}  // namespace
}  // namespace velmora
