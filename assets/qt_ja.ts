<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- The texts of Qt that its windows in this program show: the menus of text boxes and scroll bars, the
     dialog that asks for a file where the desktop has none of its own, and the reasons why a file is not written. -->
<TS version="2.1" language="ja_JP" sourcelanguage="en">
<context>
    <name>QLineEdit</name>
    <message><source>&amp;Undo</source><translation>元に戻す(&amp;U)</translation></message>
    <message><source>&amp;Redo</source><translation>やり直す(&amp;R)</translation></message>
    <message><source>Cu&amp;t</source><translation>切り取り(&amp;T)</translation></message>
    <message><source>&amp;Copy</source><translation>コピー(&amp;C)</translation></message>
    <message><source>&amp;Paste</source><translation>貼り付け(&amp;P)</translation></message>
    <message><source>Delete</source><translation>消す</translation></message>
    <message><source>Select All</source><translation>すべて選ぶ</translation></message>
</context>
<context>
    <name>QScrollBar</name>
    <message><source>Scroll here</source><translation>ここまで動かす</translation></message>
    <message><source>Top</source><translation>先頭へ</translation></message>
    <message><source>Bottom</source><translation>末尾へ</translation></message>
    <message><source>Page up</source><translation>前のページ</translation></message>
    <message><source>Page down</source><translation>次のページ</translation></message>
    <message><source>Scroll up</source><translation>一行上へ</translation></message>
    <message><source>Scroll down</source><translation>一行下へ</translation></message>
    <message><source>Left edge</source><translation>左端へ</translation></message>
    <message><source>Right edge</source><translation>右端へ</translation></message>
    <message><source>Page left</source><translation>一画面左へ</translation></message>
    <message><source>Page right</source><translation>一画面右へ</translation></message>
    <message><source>Scroll left</source><translation>少し左へ</translation></message>
    <message><source>Scroll right</source><translation>少し右へ</translation></message>
</context>
<context>
    <name>QPlatformTheme</name>
    <message><source>OK</source><translation>OK</translation></message>
    <message><source>Open</source><translation>開く</translation></message>
    <message><source>Cancel</source><translation>キャンセル</translation></message>
    <message><source>Close</source><translation>閉じる</translation></message>
    <message><source>&amp;Yes</source><translation>はい(&amp;Y)</translation></message>
    <message><source>&amp;No</source><translation>いいえ(&amp;N)</translation></message>
</context>
<context>
    <name>QFileDialog</name>
    <message><source>Look in:</source><translation>場所：</translation></message>
    <message><source>Back</source><translation>戻る</translation></message>
    <message><source>Go back</source><translation>前に見ていたフォルダに戻る</translation></message>
    <message><source>Forward</source><translation>進む</translation></message>
    <message><source>Go forward</source><translation>次に見ていたフォルダに進む</translation></message>
    <message><source>Parent Directory</source><translation>上のフォルダ</translation></message>
    <message><source>Go to the parent directory</source><translation>一つ上のフォルダに移る</translation></message>
    <message><source>Create New Folder</source><translation>フォルダを作る</translation></message>
    <message><source>Create a New Folder</source><translation>新しいフォルダを作る</translation></message>
    <message><source>List View</source><translation>一覧</translation></message>
    <message><source>Change to list view mode</source><translation>名前だけを並べる</translation></message>
    <message><source>Detail View</source><translation>詳細</translation></message>
    <message><source>Change to detail view mode</source><translation>大きさや日付も並べる</translation></message>
    <message><source>Sidebar</source><translation>よく使う場所</translation></message>
    <message><source>List of places and bookmarks</source><translation>よく使う場所の一覧</translation></message>
    <message><source>Files</source><translation>ファイル</translation></message>
    <message><source>File &amp;name:</source><translation>ファイル名(&amp;N)：</translation></message>
    <message><source>Files of type:</source><translation>種類：</translation></message>
    <message><source>All Files (*)</source><translation>すべてのファイル (*)</translation></message>
    <message><source>All files (*)</source><translation>すべてのファイル (*)</translation></message>
    <message><source>&amp;Open</source><translation>開く(&amp;O)</translation></message>
    <message><source>&amp;Choose</source><translation>選ぶ(&amp;C)</translation></message>
    <message><source>Open</source><translation>開く</translation></message>
    <message><source>&amp;Rename</source><translation>名前を変える(&amp;R)</translation></message>
    <message><source>&amp;Delete</source><translation>消す(&amp;D)</translation></message>
    <message><source>Delete</source><translation>消す</translation></message>
    <message><source>Remove</source><translation>一覧から外す</translation></message>
    <message><source>Show &amp;hidden files</source><translation>隠しファイルも見せる(&amp;H)</translation></message>
    <message><source>&amp;New Folder</source><translation>フォルダを作る(&amp;N)</translation></message>
    <message><source>New Folder</source><translation>新しいフォルダ</translation></message>
    <message><source>My Computer</source><translation>コンピュータ</translation></message>
    <message><source>Recent Places</source><translation>最近使った場所</translation></message>
    <message><source>File</source><translation>ファイル</translation></message>
    <message><source>%1 File</source><translation>%1 ファイル</translation></message>
    <message><source>Folder</source><translation>フォルダ</translation></message>
    <message><source>File Folder</source><translation>フォルダ</translation></message>
    <message><source>Drive</source><translation>ドライブ</translation></message>
    <message><source>Alias</source><translation>別名</translation></message>
    <message><source>Shortcut</source><translation>ショートカット</translation></message>
    <message><source>Unknown</source><translation>不明</translation></message>
    <message><source>Directory:</source><translation>フォルダ：</translation></message>
    <message><source>Directories</source><translation>フォルダ</translation></message>
    <message><source>%1
File not found.
Please verify the correct file name was given.</source><translation>%1
このファイルはありません。
名前を確かめてください。</translation></message>
    <message><source>%1
Directory not found.
Please verify the correct directory name was given.</source><translation>%1
このフォルダはありません。
名前を確かめてください。</translation></message>
    <message><source>'%1' is write protected.
Do you want to delete it anyway?</source><translation>「%1」は書き込みが禁じられています。
それでも消しますか？</translation></message>
    <message><source>Are you sure you want to delete '%1'?</source><translation>「%1」を消しますか？</translation></message>
    <message><source>Could not delete directory.</source><translation>フォルダを消せませんでした。</translation></message>
</context>
<context>
    <name>QFileSystemModel</name>
    <message><source>Name</source><translation>名前</translation></message>
    <message><source>Size</source><translation>大きさ</translation></message>
    <message><source>Type</source><translation>種類</translation></message>
    <message><source>Kind</source><translation>種類</translation></message>
    <message><source>Date Modified</source><translation>更新した日時</translation></message>
    <message><source>Computer</source><translation>コンピュータ</translation></message>
    <message><source>My Computer</source><translation>コンピュータ</translation></message>
    <message><source>Invalid filename</source><translation>使えない名前</translation></message>
    <message><source>&lt;b&gt;The name "%1" can not be used.&lt;/b&gt;&lt;p&gt;Try using another name, with fewer characters or no punctuations marks.</source><translation>&lt;b&gt;「%1」という名前は使えません。&lt;/b&gt;&lt;p&gt;もっと短い名前か，記号のない名前にしてください。</translation></message>
</context>
<context>
    <name>QSaveFile</name>
    <message><source>Existing file %1 is not writable</source><translation>「%1」は書き込みが禁じられています。</translation></message>
    <message><source>Filename refers to a directory</source><translation>同じ名前のフォルダがあります。</translation></message>
    <message><source>Writing canceled by application</source><translation>書き込みを途中でやめました。</translation></message>
</context>
<context>
    <name>QFile</name>
    <message><source>Destination file exists</source><translation>同じ名前のファイルがあります。</translation></message>
    <message><source>Destination file is the same file.</source><translation>元のファイルと同じファイルです。</translation></message>
    <message><source>Source file does not exist.</source><translation>元のファイルがありません。</translation></message>
    <message><source>Cannot remove source file</source><translation>元のファイルを消せません。</translation></message>
    <message><source>Error while renaming: %1</source><translation>名前を変えられません：%1</translation></message>
</context>
<context>
    <name>QIODevice</name>
    <message><source>No such file or directory</source><translation>ファイルがありません。</translation></message>
    <message><source>Permission denied</source><translation>アクセスが許されていません。</translation></message>
    <message><source>No space left on device</source><translation>空き容量がありません。</translation></message>
    <message><source>Too many open files</source><translation>開いているファイルが多すぎます。</translation></message>
    <message><source>Unknown error</source><translation>原因は分かりません。</translation></message>
</context>
</TS>
