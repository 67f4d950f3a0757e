#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <filesystem>
#include <mutex>

#include "framework/cutils_linux.h"
#include "framework/log.h"
#include "tests/support/test_paths.h"
#include "tests/themes/theme_test_support.h"
#include "themes/ctime_text.h"
#include "themes/hueloom_theme_file_serializer_v1.h"
#include "themes/hueloom_vault.h"

namespace vl1 {
namespace {

namespace fs = std::filesystem;
using serializer = hueloom_theme_file_serializer_v1;

// Each test starts from an empty app-data folder and a resource folder of its own.
class Vault : public testing::Test {
protected:
    void SetUp() override
    {
        fs::remove_all(appdata);
        set_resource_dir(resources.string());
        set_log_capture([this](std::string_view line) {
            std::lock_guard guard(log_mutex);
            logged += std::string(line) + "\n";
        });
    }
    void TearDown() override
    {
        set_log_capture(nullptr);
        set_resource_dir("");
    }

    std::shared_ptr<hueloom_theme_v1> theme(uint32_t uid, uint32_t version, const std::string& name)
    {
        auto made = std::make_shared<hueloom_theme_v1>(test::sample_theme({10.0f, 200.0f}, false));
        made->uid = uid;
        made->version = version;
        made->name = name;
        return made;
    }

    void write_import_folder(const fs::path& folder, const std::string& version_and_uid)
    {
        hueloom_test::write_file(folder / "wheel.png", "picture");
        hueloom_test::write_file(folder / "a.cube", test::cube_text(0.1f));
        hueloom_test::write_file(folder / "b.cube", test::cube_text(0.2f));
        hueloom_test::write_file(folder / "theme.json", R"({"name": "Imported", )" + version_and_uid +
                                                    R"(, "wheel": {"background": "wheel.png"},
            "luts": [{"name": "a.cube", "rotation": 10}, {"name": "b.cube", "rotation": 90}]})");
    }

    const fs::path appdata = hueloom_test::home_dir() / "Varnlight" / "Hueloom";
    const fs::path resources = hueloom_test::make_temp_dir("resources");
    hueloom_vault vault;
    std::mutex log_mutex;
    std::string logged;
};

TEST_F(Vault, StoredThemesReplaceTheirFileWholeOrNotAtAll)
{
    ASSERT_TRUE(vault.store_theme_in_appdata(theme(0xabc, 1, "first")));
    ASSERT_TRUE(vault.store_theme_in_appdata(theme(0xabc, 2, "second")));
    EXPECT_FALSE(vault.store_theme_in_appdata(nullptr));
    hueloom_theme_v1 back;
    ASSERT_TRUE(serializer::read_theme_from_file(back, (appdata / "theme_00000abc.hlt").string()));
    EXPECT_EQ(back.name, "second");
    EXPECT_EQ(back.version, 2u);
    const auto good_bytes = hueloom_test::read_bytes(appdata / "theme_00000abc.hlt");

    // Files may not grow beyond 100 kB for a moment: the write of a theme of 1.2 MB stops
    // with an error in its middle.
    rlimit former{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &former), 0);
    const auto former_handler = signal(SIGXFSZ, SIG_IGN);
    rlimit small = former;
    small.rlim_cur = 100000;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const bool stored = vault.store_theme_in_appdata(theme(0xabc, 3, "bad"));
    setrlimit(RLIMIT_FSIZE, &former);
    signal(SIGXFSZ, former_handler);

    EXPECT_FALSE(stored);
    EXPECT_EQ(hueloom_test::read_bytes(appdata / "theme_00000abc.hlt"), good_bytes);
    EXPECT_EQ(std::distance(fs::directory_iterator(appdata), fs::directory_iterator()), 1)
        << "no temporary file is left";
    EXPECT_NE(logged.find("Theme 00000abc not stored"), std::string::npos);
}

TEST_F(Vault, FillReadsOnlyThemeFilesAndSkipsBrokenOnes)
{
    fs::create_directories(appdata);
    // The uid inside a file counts, not its name.
    ASSERT_TRUE(serializer::write_theme_to_file(*theme(5, 1, "five"), (appdata / "theme_00000002.hlt").string()));
    ASSERT_TRUE(serializer::write_theme_to_file(*theme(6, 1, "six"), (appdata / "theme_00000006.hlt").string()));
    ASSERT_TRUE(serializer::write_theme_to_file(*theme(7, 1, "seven"), (appdata / "00000007.hlt~").string()));
    ASSERT_TRUE(serializer::write_theme_to_file(*theme(8, 1, "eight"), (appdata / "theme_00000008.bin").string()));
    for (const auto& broken : fs::directory_iterator(hueloom_test::data_dir() / "themes" / "hlt"))
        fs::copy_file(broken.path(), appdata / broken.path().filename());
    ASSERT_EQ(mkfifo((appdata / "fifo.hlt").c_str(), 0600), 0);

    const auto collection = vault.get_theme_collection();
    collection->add_or_replace_theme(theme(40, 1, "not in the folder"));
    vault.fill_theme_collection_from_appdata({5}, false);
    EXPECT_EQ(collection->get_theme_by_uid(5)->name, "five");
    EXPECT_EQ(collection->get_theme_by_uid(6), nullptr);
    EXPECT_EQ(collection->get_theme_by_uid(40)->name, "not in the folder");

    vault.fill_theme_collection_from_appdata({}, true);
    EXPECT_EQ(collection->get_theme_by_uid(6)->name, "six");
    EXPECT_EQ(collection->get_theme_by_uid(7), nullptr);
    EXPECT_EQ(collection->get_theme_by_uid(8), nullptr);
    for (const auto& broken : fs::directory_iterator(hueloom_test::data_dir() / "themes" / "hlt"))
        EXPECT_NE(logged.find("Skipping theme file '" + (appdata / broken.path().filename()).string() + "'"),
                  std::string::npos)
            << broken.path().filename();
}

TEST_F(Vault, CollectionStartsWithTheBuiltInThemeFromTheResources)
{
    hueloom_vault without_resource;
    EXPECT_EQ(without_resource.get_theme_collection()->get_default_theme(), nullptr);
    EXPECT_EQ(without_resource.import_theme_from_resources("theme_00000001.hlt"), nullptr);

    auto builtin = theme(1, 3, "Built-in");
    ASSERT_TRUE(serializer::write_theme_to_file(*builtin, (resources / "theme_00000001.hlt").string()));
    hueloom_test::write_file(resources / "broken.hlt", "1tlh");
    const auto collection = vault.get_theme_collection();
    EXPECT_EQ(collection, vault.get_theme_collection());
    ASSERT_NE(collection->get_default_theme(), nullptr);
    EXPECT_EQ(collection->get_default_theme()->name, "Built-in");
    EXPECT_EQ(collection->get_theme_by_uid(1)->version, 3u);
    const auto broken = vault.import_theme_from_resources("broken.hlt");
    ASSERT_NE(broken, nullptr);
    EXPECT_TRUE(broken->luts.empty());
}

TEST(VaultTimestamp, CtimeFormInEnglish)
{
    // The time stamp enters the uid of an imported theme: it must be ctime's text exactly.
    for (const std::time_t t : {std::time_t{0}, std::time_t{1700000000}, std::time_t{1234567890}}) {
        char expected[32];
        ASSERT_NE(ctime_r(&t, expected), nullptr);
        EXPECT_EQ(ctime_text(t) + "\n", expected);
    }
}

// Records what the vault asks of a download client.
struct fake_client : theme_download_client {
    struct calls {
        std::string server_url, product_id, local_path, manifest_url;
        std::map<uint32_t, int> wanted;
        int made = 0, stops = 0, waits = 0;
        uint32_t server_version = 0;
    };
    explicit fake_client(std::shared_ptr<calls> seen) : seen(std::move(seen)) { ++this->seen->made; }
    void init(const std::string& url, const std::string& product, const std::string& path) override
    {
        seen->server_url = url, seen->product_id = product, seen->local_path = path;
    }
    void set_manifest_url(const std::string& url) override { seen->manifest_url = url; }
    std::string get_server_url() const override { return seen->server_url; }
    bool schedule_theme_download(const std::map<uint32_t, int>& wanted, bool, const std::function<void()>& done) override
    {
        seen->wanted = wanted;
        done();
        return true;
    }
    bool is_busy() const override { return true; }
    void stop_download() override { ++seen->stops; }
    void wait_for_download() override { ++seen->waits; }
    float get_download_themes_percentage() const override { return 25.0f; }
    uint32_t get_server_version_of_theme(unsigned int) override { return seen->server_version; }
    std::shared_ptr<calls> seen;
};

TEST_F(Vault, DownloadsGoThroughTheClientWithTheCollectionsVersionsAndNeedOne)
{
    EXPECT_FALSE(vault.download_themes("http://127.0.0.1:9", {1, 2}, [] { FAIL() << "nothing finished"; }));
    EXPECT_EQ(vault.get_download_percentage(), -1.0f);
    EXPECT_EQ(vault.get_server_version_of_theme(1), 0u);
    vault.stop_download_themes();

    auto seen = std::make_shared<fake_client::calls>();
    vault.set_web_client_factory([seen] { return std::make_unique<fake_client>(seen); });
    vault.get_theme_collection()->add_or_replace_theme(theme(2, 4, "local"));
    bool finished = false;
    EXPECT_TRUE(vault.download_themes("http://127.0.0.1:9/t", {1, 2}, [&] { finished = true; }));
    EXPECT_TRUE(finished);
    EXPECT_EQ(seen->product_id, "Qx7tLm2D");
    EXPECT_EQ(seen->local_path, appdata.string());
    EXPECT_EQ(seen->manifest_url, "http://127.0.0.1:9/t/manifest.json");
    EXPECT_EQ(seen->wanted, (std::map<uint32_t, int>{{1, 0}, {2, 4}}));
    EXPECT_EQ(vault.get_download_percentage(), 25.0f);

    vault.download_themes("http://127.0.0.1:9/t", {1}, [] {});
    EXPECT_EQ(seen->made, 1) << "the same server keeps its client";
    vault.download_themes("http://127.0.0.1:9/other", {1}, [] {});
    EXPECT_EQ(seen->made, 2);
    vault.stop_download_themes();
    EXPECT_EQ(seen->stops, 1);
    EXPECT_EQ(seen->waits, 1);
}

TEST_F(Vault, ImportStoresTheThemeUnlessTheServerHasANewerOne)
{
    auto seen = std::make_shared<fake_client::calls>();
    vault.set_web_client_factory([seen] { return std::make_unique<fake_client>(seen); });
    vault.init_web_client("http://127.0.0.1:9");
    const fs::path folder = hueloom_test::make_temp_dir("vault-import");
    std::pair<std::string, unsigned int> result;
    std::string error;

    seen->server_version = 3;
    write_import_folder(folder, R"("version": 2, "uid": "00c0ffee")");
    for (const auto& [language, expected] :
         {std::pair{language_id::en, "Version of theme on server (3) is greater than local version (2). This is not allowed."},
          std::pair{language_id::de, "Die Version der Theme auf dem Server (3) ist ist größer als die lokale version (2). Das "
                                     "darf nicht sein."}}) {
        EXPECT_FALSE(vault.import_theme_and_store_to_appdata(folder.string(), language, result, error));
        EXPECT_EQ(error, expected);
    }
    EXPECT_EQ(vault.get_theme_collection()->get_theme_by_uid(0xc0ffee), nullptr);
    EXPECT_FALSE(fs::exists(appdata / "theme_00c0ffee.hlt"));

    write_import_folder(folder, R"("version": 3, "uid": "00c0ffee")");
    ASSERT_TRUE(vault.import_theme_and_store_to_appdata(folder.string(), language_id::de, result, error)) << error;
    EXPECT_EQ(error, "");
    EXPECT_EQ(result, (std::pair<std::string, unsigned int>{"Imported", 0xc0ffee}));
    EXPECT_EQ(vault.get_theme_collection()->get_theme_by_uid(0xc0ffee)->version, 3u);
    EXPECT_TRUE(fs::exists(appdata / "theme_00c0ffee.hlt"));

    // The folder's own refusals come in the language asked for (each is shown by the folder
    // import's tests).
    write_import_folder(folder, R"("version": 0)");
    EXPECT_FALSE(vault.import_theme_and_store_to_appdata(folder.string(), language_id::de, result, error));
    EXPECT_EQ(error, "Die Version der Theme muss größer oder gleich 1 sein.");
}

}  // namespace
}  // namespace vl1
