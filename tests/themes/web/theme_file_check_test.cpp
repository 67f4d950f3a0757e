#include <gtest/gtest.h>

#include <sstream>

#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/web/hueloom_web_client_v1.h"
#include "themes/web/theme_file_check.h"
#include "tests/themes/web/web_client_rig.h"

namespace vl1 {
namespace {

using webtest::theme_server;

std::string theme_file_bytes(uint32_t uid, uint32_t version)
{
    hueloom_theme_v1 theme;
    theme.uid = uid;
    theme.version = version;
    theme.name = "Downloaded";
    theme.background_data = {1, 2, 3};
    theme.luts.push_back({std::make_shared<lut_argb<32>>(), 0.0f});
    theme.luts.push_back({std::make_shared<lut_argb<32>>(), 90.0f});
    std::ostringstream out;
    EXPECT_TRUE(hueloom_theme_file_serializer_v1::write_theme_to_stream(theme, out));
    return out.str();
}

bool check(const std::string& bytes, uint32_t uid, std::string& problem)
{
    return is_theme_file_of_uid(
        std::span<const uint8_t>(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()), uid, problem);
}

TEST(ThemeFileCheck, AcceptsOnlyAWholeThemeFileOfTheUidAskedFor)
{
    const std::string bytes = theme_file_bytes(0x0a1b2c3d, 2);
    std::string problem;
    EXPECT_TRUE(check(bytes, 0x0a1b2c3d, problem)) << problem;
    EXPECT_FALSE(check(bytes, 0x0a1b2c3e, problem));
    EXPECT_NE(problem.find("0a1b2c3d"), std::string::npos);
    EXPECT_FALSE(check(bytes.substr(0, bytes.size() - 1000), 0x0a1b2c3d, problem));
    EXPECT_FALSE(check("", 0x0a1b2c3d, problem));
    EXPECT_FALSE(check("<html>404</html>", 0x0a1b2c3d, problem));
}

TEST(ThemeFileCheck, ClientsInstallRealThemeFilesOnlyUnlessToldOtherwise)
{
    webtest::theme_server server;
    const auto folder = hueloom_test::make_temp_dir("default-check");
    server.set_body("/manifest.json", R"({"00000011": 3, "00000022": 3})");
    server.set_body(theme_server::theme_path(0x11), theme_file_bytes(0x11, 3));
    server.set_body(theme_server::theme_path(0x22), theme_file_bytes(0x33, 3));  // wrong theme

    const std::unique_ptr<theme_download_client> client = make_web_client_factory()();
    ASSERT_NE(dynamic_cast<hueloom_web_client_v1*>(client.get()), nullptr);
    client->init(server.url(), "Qx7tLm2D", folder.string());
    client->set_manifest_url(server.url() + "/manifest.json");
    ASSERT_TRUE(client->schedule_theme_download({{0x11, 0}, {0x22, 0}}, true, {}));
    client->wait_for_download();

    EXPECT_TRUE(std::filesystem::exists(folder / "theme_00000011.hlt"));
    EXPECT_FALSE(std::filesystem::exists(folder / "theme_00000022.hlt"));
    EXPECT_FALSE(std::filesystem::exists(folder / "00000022.hlt~"));
    hueloom_theme_v1 theme;
    ASSERT_TRUE(hueloom_theme_file_serializer_v1::read_theme_from_file(theme, (folder / "theme_00000011.hlt").string()));
    EXPECT_EQ(theme.uid, 0x11u);
    EXPECT_EQ(theme.version, 3u);

    // Without any check nothing is taken.
    hueloom_web_client_v1 unchecked;
    unchecked.init(server.url(), "Qx7tLm2D", folder.string());
    unchecked.set_manifest_url(server.url() + "/manifest.json");
    unchecked.set_theme_validator({});
    unchecked.set_finish_delay(std::chrono::milliseconds(0));
    std::filesystem::remove(folder / "theme_00000011.hlt");
    ASSERT_TRUE(unchecked.schedule_theme_download({{0x11, 0}}, true, {}));
    unchecked.wait_for_download();
    EXPECT_TRUE(std::filesystem::is_empty(folder));
}

}  // namespace
}  // namespace vl1
