<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>BarLabelView</name>
    <message>
        <source>No Swap</source>
        <translation>スワップなし</translation>
    </message>
</context>
<context>
    <name>HeaderView</name>
    <message>
        <source>Process</source>
        <translation>プロセス</translation>
    </message>
    <message>
        <source>Usage</source>
        <translation>使用量</translation>
    </message>
</context>
<context>
    <name>LevelWords</name>
    <message>
        <source>Low</source>
        <translation>低</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>High</source>
        <translation>高</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1、%2</translation>
    </message>
</context>
<context>
    <name>MemoryWatcher</name>
    <message>
        <source>Physical Memory</source>
        <translation>物理メモリ</translation>
    </message>
    <message>
        <source>Memory Used</source>
        <translation>使用メモリ</translation>
    </message>
    <message>
        <source>App Memory</source>
        <translation>アプリメモリ</translation>
    </message>
    <message>
        <source>Wired Memory</source>
        <translation>固定メモリ</translation>
    </message>
    <message>
        <source>Compressed</source>
        <translation>圧縮</translation>
    </message>
    <message>
        <source>Free Memory</source>
        <translation>空きメモリ</translation>
    </message>
    <message>
        <source>Cached Files</source>
        <translation>キャッシュされたファイル</translation>
    </message>
    <message>
        <source>Swap Used</source>
        <translation>使用中のスワップ</translation>
    </message>
    <message>
        <source>Swap Total</source>
        <translation>スワップの合計</translation>
    </message>
    <message>
        <source>Swap memory usage</source>
        <translation>スワップの使用</translation>
    </message>
    <message>
        <source>High swap usage</source>
        <translation>スワップの使用量が多くなっています</translation>
    </message>
    <message>
        <source>Very high swap usage</source>
        <translation>スワップの使用量が非常に多くなっています</translation>
    </message>
    <message>
        <source>Your computer uses swap memory (%1).</source>
        <translation>コンピュータがスワップを使用しています（%1）。</translation>
    </message>
    <message>
        <source>Restart your computer if you want to free up swap memory.</source>
        <translation>スワップを解放するには、コンピュータを再起動してください。</translation>
    </message>
</context>
<context>
    <name>ProgressView</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
</context>
<context>
    <name>QGuiApplication</name>
    <message>
        <source>QT_LAYOUT_DIRECTION</source>
        <translation>LTR</translation>
    </message>
</context>
<context>
    <name>QuitConfirmation</name>
    <message>
        <source>Are you sure you want to quit?</source>
        <translation>終了してもよろしいですか?</translation>
    </message>
    <message>
        <source>%1 will terminate immediately.</source>
        <translation>%1 はすぐに終了します。</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
</context>
<context>
    <name>SPUStandardUserDriver</name>
    <message>
        <source>Release notes</source>
        <translation>リリースノート</translation>
    </message>
    <message>
        <source>The update server cannot be reached. Check the connection to the internet and try again.</source>
        <translation>アップデートサーバに接続できません。インターネット接続を確認して、もう一度お試しください。</translation>
    </message>
    <message>
        <source>The update server could not prove that it is the right one. Nothing was downloaded from it.</source>
        <translation>アップデートサーバが本物であることを確認できませんでした。何もダウンロードしていません。</translation>
    </message>
    <message>
        <source>The update server does not have what was asked for. Try again later.</source>
        <translation>要求したものがアップデートサーバにありません。あとでもう一度お試しください。</translation>
    </message>
    <message>
        <source>The update server points to a place that is not safe. Nothing was downloaded from there.</source>
        <translation>アップデートサーバが安全でない場所を示しています。何もダウンロードしていません。</translation>
    </message>
    <message>
        <source>The update server takes too long to answer. Try again later.</source>
        <translation>アップデートサーバの応答に時間がかかりすぎています。あとでもう一度お試しください。</translation>
    </message>
    <message>
        <source>The update server sent a list of versions that cannot be read.</source>
        <translation>アップデートサーバから届いたバージョン一覧を読み取れません。</translation>
    </message>
    <message>
        <source>The downloaded file is not complete, or is not the right one. It was deleted.</source>
        <translation>ダウンロードしたファイルが不完全か、別のファイルです。削除しました。</translation>
    </message>
    <message>
        <source>The downloaded file was not made by the developers of this program, or was changed on its way. It was deleted.</source>
        <translation>ダウンロードしたファイルはこのプログラムの開発者が作成したものではないか、途中で変更されています。削除しました。</translation>
    </message>
    <message>
        <source>The update could not be saved. There may be no space left on the disk.</source>
        <translation>アップデートを保存できませんでした。ディスクの空き容量がない可能性があります。</translation>
    </message>
    <message>
        <source>The program&apos;s file could not be replaced. You may not have the right to change the folder that it is in.</source>
        <translation>プログラムのファイルを置き換えられませんでした。そのフォルダを変更する権限がない可能性があります。</translation>
    </message>
    <message>
        <source>The update was downloaded, but there is no program here to open it with.</source>
        <translation>アップデートをダウンロードしましたが、開くためのプログラムがありません。</translation>
    </message>
    <message>
        <source>This program was not set up for updates.</source>
        <translation>このプログラムはアップデート用に設定されていません。</translation>
    </message>
    <message>
        <source>A part of this program is missing or broke down.</source>
        <translation>このプログラムの一部がないか、故障しています。</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation>アップデートを確認中…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>%1 is up to date.</source>
        <translation>%1は最新です。</translation>
    </message>
    <message>
        <source>Version %1 is the newest one there is for this computer.</source>
        <translation>バージョン %1 はこのコンピュータで使える最新版です。</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>A new version of %1 is available.</source>
        <translation>%1の新しいバージョンがあります。</translation>
    </message>
    <message>
        <source>Version %1 can be installed now. You have version %2.</source>
        <translation>バージョン %1 をインストールできます。現在のバージョンは %2 です。</translation>
    </message>
    <message>
        <source>Skip This Version</source>
        <translation>このバージョンをスキップ</translation>
    </message>
    <message>
        <source>Remind Me Later</source>
        <translation>あとで通知</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>インストール</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>%1 %2 をダウンロード中…</translation>
    </message>
    <message>
        <source>Installing %1 %2…</source>
        <translation>%1 %2 をインストール中…</translation>
    </message>
    <message>
        <source>%1 %2 is installed.</source>
        <translation>%1 %2 をインストールしました。</translation>
    </message>
    <message>
        <source>It will be used from the next start on.</source>
        <translation>次回の起動から使われます。</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>あとで</translation>
    </message>
    <message>
        <source>Restart Now</source>
        <translation>今すぐ再起動</translation>
    </message>
    <message>
        <source>%1 %2 was downloaded and verified.</source>
        <translation>%1 %2 をダウンロードして検証しました。</translation>
    </message>
    <message>
        <source>The update did not succeed.</source>
        <translation>アップデートできませんでした。</translation>
    </message>
    <message>
        <source>The list of versions was not made by the developers of this program, or was changed on its way. Nothing in it was used.</source>
        <translation>バージョンの一覧は、このプログラムの開発者が作成したものではないか、途中で変更されています。その内容は一切使用していません。</translation>
    </message>
    <message>
        <source>The update server sent an old list of versions. Try again later, and check that the date of this computer is right.</source>
        <translation>アップデートサーバーから古いバージョンの一覧が送られてきました。しばらくしてからもう一度お試しになり、このコンピューターの日付が正しいことを確認してください。</translation>
    </message>
    <message>
        <source>It was handed to your desktop, to be opened with the program that installs such files. If nothing opens, install it from its folder.</source>
        <translation>この種類のファイルをインストールするプログラムで開くよう、デスクトップに渡しました。何も開かない場合は、フォルダーからインストールしてください。</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>フォルダーを開く</translation>
    </message>
</context>
<context>
    <name>SampleTimes</name>
    <message>
        <source>last %1 s</source>
        <translation>過去%1秒</translation>
    </message>
    <message>
        <source>last %1 min</source>
        <translation>過去%1分</translation>
    </message>
    <message>
        <source>last %1 d</source>
        <translation>過去%1日</translation>
    </message>
    <message>
        <source>last %1 h %2 min</source>
        <translation>過去%1時間%2分</translation>
    </message>
</context>
<context>
    <name>Scenes</name>
    <message>
        <source>About</source>
        <translation>情報</translation>
    </message>
    <message>
        <source>%1 Settings</source>
        <translation>%1 の設定</translation>
    </message>
    <message>
        <source>App Memory</source>
        <translation>アプリメモリ</translation>
    </message>
</context>
<context>
    <name>TidewellApp</name>
    <message>
        <source>Open</source>
        <translation>開く</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>About</source>
        <translation>情報</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>終了</translation>
    </message>
</context>
<context>
    <name>UsageText</name>
    <message>
        <source>Processes: %1</source>
        <translation>プロセス: %1</translation>
    </message>
    <message>
        <source>Largest process: %1</source>
        <translation>最大のプロセス: %1</translation>
    </message>
    <message>
        <source>Resident (RSS): %1</source>
        <translation>常駐 (RSS): %1</translation>
    </message>
    <message>
        <source>Shared counted once (PSS): %1</source>
        <translation>共有を1回だけ計上 (PSS): %1</translation>
    </message>
    <message>
        <source>In swap: %1</source>
        <translation>スワップ内: %1</translation>
    </message>
    <message>
        <source>Swap %1</source>
        <translation>スワップ %1</translation>
    </message>
</context>
<context>
    <name>tidewell::AboutView</name>
    <message>
        <source>Version %1 (%2)</source>
        <translation>バージョン %1 (%2)</translation>
    </message>
    <message>
        <source>Built for the Linux desktop</source>
        <translation>Linuxデスクトップのために</translation>
    </message>
    <message>
        <source>Visit website</source>
        <translation>ウェブサイトを開く</translation>
    </message>
</context>
<context>
    <name>tidewell::AppMemoryView</name>
    <message>
        <source>Processes</source>
        <translation>プロセス</translation>
    </message>
    <message>
        <source>Processes Real Mem [%1]</source>
        <translation>プロセスの実メモリ [%1]</translation>
    </message>
    <message>
        <source>A sandbox hides the other programs from this one. Installed without a sandbox, it shows their memory here.</source>
        <translation>サンドボックスにより、ほかのプログラムはこのプログラムから見えません。サンドボックスなしでインストールすると、それらのメモリがここに表示されます。</translation>
    </message>
</context>
<context>
    <name>tidewell::BarChart</name>
    <message>
        <source>No samples yet</source>
        <translation>まだ記録がありません</translation>
    </message>
    <message>
        <source>%1 at %2</source>
        <translation>%2 に %1</translation>
    </message>
</context>
<context>
    <name>tidewell::ContentView</name>
    <message>
        <source>General</source>
        <translation>一般</translation>
    </message>
    <message>
        <source>Memory Pressure</source>
        <translation>メモリ負荷</translation>
    </message>
</context>
<context>
    <name>tidewell::GaugesRow</name>
    <message>
        <source>Pressure</source>
        <translation>負荷</translation>
    </message>
    <message>
        <source>Memory Usage</source>
        <translation>メモリ使用率</translation>
    </message>
</context>
<context>
    <name>tidewell::PanelPrompts</name>
    <message>
        <source>Press to set Allow Notifications</source>
        <translation>クリックして通知を許可</translation>
    </message>
    <message>
        <source>Update available!</source>
        <translation>アップデートがあります</translation>
    </message>
    <message>
        <source>This desktop has no notification settings that %1 can open.</source>
        <translation>このデスクトップには %1 が開ける通知の設定がありません。</translation>
    </message>
    <message>
        <source>Allow its notifications where your desktop keeps them.</source>
        <translation>デスクトップの通知の管理画面で許可してください。</translation>
    </message>
</context>
<context>
    <name>tidewell::PanelToolbar</name>
    <message>
        <source>About %1</source>
        <translation>%1 について</translation>
    </message>
    <message>
        <source>Go to Settings - %1</source>
        <translation>設定を開く - %1</translation>
    </message>
    <message>
        <source>Quit %1 - %2</source>
        <translation>%1 を終了 - %2</translation>
    </message>
    <message>
        <source>About</source>
        <translation>情報</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>終了</translation>
    </message>
</context>
<context>
    <name>tidewell::PollingSettings</name>
    <message>
        <source>Poll more often</source>
        <translation>より頻繁に測定</translation>
    </message>
    <message>
        <source>Poll less often</source>
        <translation>測定回数を減らす</translation>
    </message>
    <message>
        <source>Polling interval in seconds</source>
        <translation>測定間隔（秒）</translation>
    </message>
    <message numerus="yes">
        <source>Polling interval: %1 secs</source>
        <translation>
            <numerusform>測定間隔: %1秒</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Polling interval: %1 sec</source>
        <translation>
            <numerusform>測定間隔: %1秒</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tidewell::ScrollingBarChart</name>
    <message>
        <source>Swap Usage</source>
        <translation>スワップ使用量</translation>
    </message>
</context>
<context>
    <name>tidewell::ScrollingBarChartFixed</name>
    <message>
        <source>Memory Pressure</source>
        <translation>メモリ負荷</translation>
    </message>
</context>
<context>
    <name>tidewell::SettingsView</name>
    <message>
        <source>Start %1 at login</source>
        <translation>ログイン時に %1 を起動</translation>
    </message>
    <message>
        <source>Confirm quit on exit</source>
        <translation>終了する前に確認</translation>
    </message>
    <message>
        <source>General</source>
        <translation>一般</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>アップデート</translation>
    </message>
</context>
<context>
    <name>tidewell::SwapSection</name>
    <message>
        <source>Swap</source>
        <translation>スワップ</translation>
    </message>
    <message>
        <source>No swap memory used.</source>
        <translation>スワップは使用されていません。</translation>
    </message>
    <message>
        <source>Swap Usage</source>
        <translation>スワップ使用量</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
</context>
<context>
    <name>tidewell::UpdateSettings</name>
    <message>
        <source>Hourly</source>
        <translation>毎時</translation>
    </message>
    <message>
        <source>Daily</source>
        <translation>毎日</translation>
    </message>
    <message>
        <source>Weekly</source>
        <translation>毎週</translation>
    </message>
    <message>
        <source>Monthly</source>
        <translation>毎月</translation>
    </message>
    <message>
        <source>Automatically check for updates</source>
        <translation>アップデートを自動的に確認</translation>
    </message>
    <message>
        <source>Automatically download updates</source>
        <translation>アップデートを自動的にダウンロード</translation>
    </message>
    <message>
        <source>Update check interval</source>
        <translation>確認の間隔</translation>
    </message>
    <message>
        <source>Check for Updates now</source>
        <translation>今すぐアップデートを確認</translation>
    </message>
</context>
</TS>
