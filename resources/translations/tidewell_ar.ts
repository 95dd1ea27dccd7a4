<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>BarLabelView</name>
    <message>
        <source>No Swap</source>
        <translation>لا تبديل</translation>
    </message>
</context>
<context>
    <name>HeaderView</name>
    <message>
        <source>Process</source>
        <translation>العملية</translation>
    </message>
    <message>
        <source>Usage</source>
        <translation>الاستخدام</translation>
    </message>
</context>
<context>
    <name>LevelWords</name>
    <message>
        <source>Low</source>
        <translation>منخفض</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>تحذير</translation>
    </message>
    <message>
        <source>High</source>
        <translation>مرتفع</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1، %2</translation>
    </message>
</context>
<context>
    <name>MemoryWatcher</name>
    <message>
        <source>Physical Memory</source>
        <translation>الذاكرة الفعلية</translation>
    </message>
    <message>
        <source>Memory Used</source>
        <translation>الذاكرة المستخدمة</translation>
    </message>
    <message>
        <source>App Memory</source>
        <translation>ذاكرة التطبيقات</translation>
    </message>
    <message>
        <source>Wired Memory</source>
        <translation>الذاكرة المحجوزة</translation>
    </message>
    <message>
        <source>Compressed</source>
        <translation>مضغوطة</translation>
    </message>
    <message>
        <source>Free Memory</source>
        <translation>الذاكرة الحرة</translation>
    </message>
    <message>
        <source>Cached Files</source>
        <translation>الملفات المخزنة مؤقتًا</translation>
    </message>
    <message>
        <source>Swap Used</source>
        <translation>المبادلة المستخدمة</translation>
    </message>
    <message>
        <source>Swap Total</source>
        <translation>إجمالي المبادلة</translation>
    </message>
    <message>
        <source>Swap memory usage</source>
        <translation>استخدام ذاكرة المبادلة</translation>
    </message>
    <message>
        <source>High swap usage</source>
        <translation>استخدام مرتفع للمبادلة</translation>
    </message>
    <message>
        <source>Very high swap usage</source>
        <translation>استخدام مرتفع جدًا للمبادلة</translation>
    </message>
    <message>
        <source>Your computer uses swap memory (%1).</source>
        <translation>يستخدم حاسوبك ذاكرة المبادلة (%1).</translation>
    </message>
    <message>
        <source>Restart your computer if you want to free up swap memory.</source>
        <translation>أعد تشغيل حاسوبك إذا أردت تحرير ذاكرة المبادلة.</translation>
    </message>
</context>
<context>
    <name>ProgressView</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 من %2</translation>
    </message>
</context>
<context>
    <name>QGuiApplication</name>
    <message>
        <source>QT_LAYOUT_DIRECTION</source>
        <translation>RTL</translation>
    </message>
</context>
<context>
    <name>QuitConfirmation</name>
    <message>
        <source>Are you sure you want to quit?</source>
        <translation>هل تريد الإنهاء فعلًا؟</translation>
    </message>
    <message>
        <source>%1 will terminate immediately.</source>
        <translation>سيُنهى %1 فورًا.</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>إنهاء</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
</context>
<context>
    <name>SPUStandardUserDriver</name>
    <message>
        <source>Release notes</source>
        <translation>ملاحظات الإصدار</translation>
    </message>
    <message>
        <source>The update server cannot be reached. Check the connection to the internet and try again.</source>
        <translation>تعذر الوصول إلى خادم التحديثات. تحقق من الاتصال بالإنترنت وحاول مرة أخرى.</translation>
    </message>
    <message>
        <source>The update server could not prove that it is the right one. Nothing was downloaded from it.</source>
        <translation>لم يتمكن خادم التحديثات من إثبات هويته. لم يُنزَّل منه شيء.</translation>
    </message>
    <message>
        <source>The update server does not have what was asked for. Try again later.</source>
        <translation>لا يملك خادم التحديثات ما طُلب منه. حاول لاحقًا.</translation>
    </message>
    <message>
        <source>The update server points to a place that is not safe. Nothing was downloaded from there.</source>
        <translation>يشير خادم التحديثات إلى عنوان غير آمن. لم يُنزَّل منه شيء.</translation>
    </message>
    <message>
        <source>The update server takes too long to answer. Try again later.</source>
        <translation>يستغرق خادم التحديثات وقتًا طويلًا للرد. حاول لاحقًا.</translation>
    </message>
    <message>
        <source>The update server sent a list of versions that cannot be read.</source>
        <translation>أرسل خادم التحديثات قائمة إصدارات لا يمكن قراءتها.</translation>
    </message>
    <message>
        <source>The downloaded file is not complete, or is not the right one. It was deleted.</source>
        <translation>الملف المُنزَّل غير مكتمل أو ليس الملف الصحيح. تم حذفه.</translation>
    </message>
    <message>
        <source>The downloaded file was not made by the developers of this program, or was changed on its way. It was deleted.</source>
        <translation>الملف المُنزَّل ليس من مطوري هذا البرنامج أو تغيّر في الطريق. تم حذفه.</translation>
    </message>
    <message>
        <source>The update could not be saved. There may be no space left on the disk.</source>
        <translation>تعذر حفظ التحديث. ربما لا توجد مساحة كافية على القرص.</translation>
    </message>
    <message>
        <source>The program&apos;s file could not be replaced. You may not have the right to change the folder that it is in.</source>
        <translation>تعذر استبدال ملف البرنامج. قد لا تملك صلاحية تغيير المجلد الذي يوجد فيه.</translation>
    </message>
    <message>
        <source>The update was downloaded, but there is no program here to open it with.</source>
        <translation>نُزِّل التحديث، لكن لا يوجد هنا برنامج لفتحه.</translation>
    </message>
    <message>
        <source>This program was not set up for updates.</source>
        <translation>لم يُعدّ هذا البرنامج للتحديثات.</translation>
    </message>
    <message>
        <source>A part of this program is missing or broke down.</source>
        <translation>جزء من هذا البرنامج مفقود أو معطّل.</translation>
    </message>
    <message>
        <source>Checking for updates…</source>
        <translation>جارٍ البحث عن تحديثات…</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>إلغاء</translation>
    </message>
    <message>
        <source>%1 is up to date.</source>
        <translation>%1 محدَّث.</translation>
    </message>
    <message>
        <source>Version %1 is the newest one there is for this computer.</source>
        <translation>الإصدار %1 هو أحدث إصدار متاح لهذا الحاسوب.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>موافق</translation>
    </message>
    <message>
        <source>A new version of %1 is available.</source>
        <translation>يتوفر إصدار جديد من %1.</translation>
    </message>
    <message>
        <source>Version %1 can be installed now. You have version %2.</source>
        <translation>يمكن تثبيت الإصدار %1 الآن. لديك الإصدار %2.</translation>
    </message>
    <message>
        <source>Skip This Version</source>
        <translation>تخطي هذا الإصدار</translation>
    </message>
    <message>
        <source>Remind Me Later</source>
        <translation>ذكّرني لاحقًا</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>تثبيت</translation>
    </message>
    <message>
        <source>Downloading %1 %2…</source>
        <translation>جارٍ تنزيل %1 %2…</translation>
    </message>
    <message>
        <source>Installing %1 %2…</source>
        <translation>جارٍ تثبيت %1 %2…</translation>
    </message>
    <message>
        <source>%1 %2 is installed.</source>
        <translation>تم تثبيت %1 %2.</translation>
    </message>
    <message>
        <source>It will be used from the next start on.</source>
        <translation>سيُستخدم ابتداءً من التشغيل التالي.</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>لاحقًا</translation>
    </message>
    <message>
        <source>Restart Now</source>
        <translation>إعادة التشغيل الآن</translation>
    </message>
    <message>
        <source>%1 %2 was downloaded and verified.</source>
        <translation>تم تنزيل %1 %2 والتحقق منه.</translation>
    </message>
    <message>
        <source>The update did not succeed.</source>
        <translation>لم ينجح التحديث.</translation>
    </message>
    <message>
        <source>The list of versions was not made by the developers of this program, or was changed on its way. Nothing in it was used.</source>
        <translation>لم يُنشئ مطوّرو هذا البرنامج قائمة الإصدارات، أو أنها تغيّرت في طريقها. لم يُستخدم أي شيء منها.</translation>
    </message>
    <message>
        <source>The update server sent an old list of versions. Try again later, and check that the date of this computer is right.</source>
        <translation>أرسل خادم التحديثات قائمة إصدارات قديمة. حاول مرة أخرى لاحقًا، وتحقّق من صحة تاريخ هذا الحاسوب.</translation>
    </message>
    <message>
        <source>It was handed to your desktop, to be opened with the program that installs such files. If nothing opens, install it from its folder.</source>
        <translation>سُلّم الملف إلى سطح المكتب ليُفتح بالبرنامج الذي يثبّت مثل هذه الملفات. إن لم يُفتح شيء، فثبّته من مجلده.</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>فتح المجلد</translation>
    </message>
</context>
<context>
    <name>SampleTimes</name>
    <message>
        <source>last %1 s</source>
        <translation>آخر %1 ث</translation>
    </message>
    <message>
        <source>last %1 min</source>
        <translation>آخر %1 د</translation>
    </message>
    <message>
        <source>last %1 d</source>
        <translation>آخر %1 ي</translation>
    </message>
    <message>
        <source>last %1 h %2 min</source>
        <translation>آخر %1 س و%2 د</translation>
    </message>
</context>
<context>
    <name>Scenes</name>
    <message>
        <source>About</source>
        <translation>حول</translation>
    </message>
    <message>
        <source>%1 Settings</source>
        <translation>إعدادات %1</translation>
    </message>
    <message>
        <source>App Memory</source>
        <translation>ذاكرة التطبيقات</translation>
    </message>
</context>
<context>
    <name>TidewellApp</name>
    <message>
        <source>Open</source>
        <translation>فتح</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>الإعدادات</translation>
    </message>
    <message>
        <source>About</source>
        <translation>حول</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>إنهاء</translation>
    </message>
</context>
<context>
    <name>UsageText</name>
    <message>
        <source>Processes: %1</source>
        <translation>العمليات: %1</translation>
    </message>
    <message>
        <source>Largest process: %1</source>
        <translation>أكبر عملية: %1</translation>
    </message>
    <message>
        <source>Resident (RSS): %1</source>
        <translation>المقيمة (RSS): %1</translation>
    </message>
    <message>
        <source>Shared counted once (PSS): %1</source>
        <translation>المشتركة محسوبة مرة واحدة (PSS): %1</translation>
    </message>
    <message>
        <source>In swap: %1</source>
        <translation>في المبادلة: %1</translation>
    </message>
    <message>
        <source>Swap %1</source>
        <translation>مبادلة %1</translation>
    </message>
</context>
<context>
    <name>tidewell::AboutView</name>
    <message>
        <source>Version %1 (%2)</source>
        <translation>الإصدار %1 (%2)</translation>
    </message>
    <message>
        <source>Built for the Linux desktop</source>
        <translation>صُنع لسطح مكتب لينكس</translation>
    </message>
    <message>
        <source>Visit website</source>
        <translation>زيارة الموقع</translation>
    </message>
</context>
<context>
    <name>tidewell::AppMemoryView</name>
    <message>
        <source>Processes</source>
        <translation>العمليات</translation>
    </message>
    <message>
        <source>Processes Real Mem [%1]</source>
        <translation>الذاكرة الفعلية للعمليات [%1]</translation>
    </message>
    <message>
        <source>A sandbox hides the other programs from this one. Installed without a sandbox, it shows their memory here.</source>
        <translation>يخفي الصندوق الرملي البرامج الأخرى عن هذا البرنامج. عند تثبيته خارج الصندوق الرملي، يعرض ذاكرتها هنا.</translation>
    </message>
</context>
<context>
    <name>tidewell::BarChart</name>
    <message>
        <source>No samples yet</source>
        <translation>لا توجد قياسات بعد</translation>
    </message>
    <message>
        <source>%1 at %2</source>
        <translation>%1 في %2</translation>
    </message>
</context>
<context>
    <name>tidewell::ContentView</name>
    <message>
        <source>General</source>
        <translation>عام</translation>
    </message>
    <message>
        <source>Memory Pressure</source>
        <translation>ضغط الذاكرة</translation>
    </message>
</context>
<context>
    <name>tidewell::GaugesRow</name>
    <message>
        <source>Pressure</source>
        <translation>الضغط</translation>
    </message>
    <message>
        <source>Memory Usage</source>
        <translation>استخدام الذاكرة</translation>
    </message>
</context>
<context>
    <name>tidewell::PanelPrompts</name>
    <message>
        <source>Press to set Allow Notifications</source>
        <translation>انقر للسماح بالإشعارات</translation>
    </message>
    <message>
        <source>Update available!</source>
        <translation>يتوفر تحديث!</translation>
    </message>
    <message>
        <source>This desktop has no notification settings that %1 can open.</source>
        <translation>لا يحتوي سطح المكتب هذا على إعدادات إشعارات يمكن لـ %1 فتحها.</translation>
    </message>
    <message>
        <source>Allow its notifications where your desktop keeps them.</source>
        <translation>اسمح بإشعاراته من المكان الذي يديرها فيه سطح المكتب.</translation>
    </message>
</context>
<context>
    <name>tidewell::PanelToolbar</name>
    <message>
        <source>About %1</source>
        <translation>حول %1</translation>
    </message>
    <message>
        <source>Go to Settings - %1</source>
        <translation>الانتقال إلى الإعدادات - %1</translation>
    </message>
    <message>
        <source>Quit %1 - %2</source>
        <translation>إنهاء %1 - %2</translation>
    </message>
    <message>
        <source>About</source>
        <translation>حول</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>الإعدادات</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>إنهاء</translation>
    </message>
</context>
<context>
    <name>tidewell::PollingSettings</name>
    <message>
        <source>Poll more often</source>
        <translation>القياس أكثر</translation>
    </message>
    <message>
        <source>Poll less often</source>
        <translation>القياس أقل</translation>
    </message>
    <message>
        <source>Polling interval in seconds</source>
        <translation>الفاصل بين القياسات بالثواني</translation>
    </message>
    <message numerus="yes">
        <source>Polling interval: %1 secs</source>
        <translation>
            <numerusform>الفاصل بين القياسات: %1 ثانية</numerusform>
            <numerusform>الفاصل بين القياسات: %1 ثانية</numerusform>
            <numerusform>الفاصل بين القياسات: %1 ثانيتان</numerusform>
            <numerusform>الفاصل بين القياسات: %1 ثوانٍ</numerusform>
            <numerusform>الفاصل بين القياسات: %1 ثانية</numerusform>
            <numerusform>الفاصل بين القياسات: %1 ثانية</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Polling interval: %1 sec</source>
        <translation>
            <numerusform>الفاصل بين القياسات: %1 ثانية</numerusform>
            <numerusform>الفاصل بين القياسات: %1 ثانية</numerusform>
            <numerusform>الفاصل بين القياسات: %1 ثانيتان</numerusform>
            <numerusform>الفاصل بين القياسات: %1 ثوانٍ</numerusform>
            <numerusform>الفاصل بين القياسات: %1 ثانية</numerusform>
            <numerusform>الفاصل بين القياسات: %1 ثانية</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>tidewell::ScrollingBarChart</name>
    <message>
        <source>Swap Usage</source>
        <translation>استخدام المبادلة</translation>
    </message>
</context>
<context>
    <name>tidewell::ScrollingBarChartFixed</name>
    <message>
        <source>Memory Pressure</source>
        <translation>ضغط الذاكرة</translation>
    </message>
</context>
<context>
    <name>tidewell::SettingsView</name>
    <message>
        <source>Start %1 at login</source>
        <translation>تشغيل %1 عند تسجيل الدخول</translation>
    </message>
    <message>
        <source>Confirm quit on exit</source>
        <translation>التأكيد قبل الإنهاء</translation>
    </message>
    <message>
        <source>General</source>
        <translation>عام</translation>
    </message>
    <message>
        <source>Updates</source>
        <translation>التحديثات</translation>
    </message>
</context>
<context>
    <name>tidewell::SwapSection</name>
    <message>
        <source>Swap</source>
        <translation>المبادلة</translation>
    </message>
    <message>
        <source>No swap memory used.</source>
        <translation>لا تُستخدم ذاكرة مبادلة.</translation>
    </message>
    <message>
        <source>Swap Usage</source>
        <translation>استخدام المبادلة</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 من %2</translation>
    </message>
</context>
<context>
    <name>tidewell::UpdateSettings</name>
    <message>
        <source>Hourly</source>
        <translation>كل ساعة</translation>
    </message>
    <message>
        <source>Daily</source>
        <translation>كل يوم</translation>
    </message>
    <message>
        <source>Weekly</source>
        <translation>كل أسبوع</translation>
    </message>
    <message>
        <source>Monthly</source>
        <translation>كل شهر</translation>
    </message>
    <message>
        <source>Automatically check for updates</source>
        <translation>البحث عن التحديثات تلقائيًا</translation>
    </message>
    <message>
        <source>Automatically download updates</source>
        <translation>تنزيل التحديثات تلقائيًا</translation>
    </message>
    <message>
        <source>Update check interval</source>
        <translation>فترة البحث عن التحديثات</translation>
    </message>
    <message>
        <source>Check for Updates now</source>
        <translation>البحث عن التحديثات الآن</translation>
    </message>
</context>
</TS>
