// Every text that the page itself shows. What the reports and their forms say comes from the component.
export const t = {
  appName: "库存报表",
  standardTitle: "信息提示",
  // signing in, the line
  userName: "用户名", password: "密码", signIn: "登录", signOut: "退出", signInTitle: "登录库存报表",
  connecting: "正在连接…", lineLost: "与服务器的连接已断开，正在重新连接…",
  unreachable: "连接不上服务器。请检查网络，然后重试。", retry: "重试",
  ended: { idle: "会话因长时间未操作已结束。", logout: "您已退出。", replaced: "此会话已在另一个窗口中打开。", shutdown: "服务器正在关闭。" } as Record<string, string>,
  startAgain: "重新开始",
  crashed: "报表程序意外中止，打开的报表已丢失。其他用户不受影响。",
  hangs: "报表程序暂时没有响应。可以再等一会儿，或重新开始（打开的报表会丢失）。",
  // list
  reports: "报表", searchReports: "名称、编号或拼音首字母", favourites: "收藏", recent: "最近使用",
  addFavourite: "加入收藏", removeFavourite: "取消收藏", noneFound: "没有找到报表", notAvailable: "本版本未提供",
  welcomeTitle: "请从左侧选择一个报表", welcomeText: "选择报表后会出现过滤窗口；填写条件，按“确定”即可看到数据。",
  hintTitle: "第一次使用？", hintSteps: ["在左侧按名称、编号或拼音首字母查找报表，单击打开。", "在过滤窗口填写条件；回车到下一项，F7 查找资料。", "在表格里用方向键移动，单击列头排序，Ctrl+F 查找。", "按 F1 打开使用说明。"], hintDone: "知道了",
  openTabs: "打开的报表", closeTab: "关闭", hideList: "收起报表列表", showList: "展开报表列表",
  light: "浅色", dark: "深色", theme: "外观", help: "使用说明", opening: "正在打开…", failed: "报表没有打开", allUnrestricted: "", restricted: "部分数据",
  unknownReport: (number: string) => `没有编号为 ${number} 的报表。`,
  // report
  filterAgain: "过滤", refresh: "刷新", quickFilter: "快速筛选", find: "查找", findNext: "下一个", findPrevious: "上一个", notFound: "没有找到",
  columns: "列设置", copy: "复制", print: "打印", exportCsv: "导出 CSV", exporting: "正在导出", cancel: "取消", ok: "确定", close: "关闭", explain: "数据说明",
  zeroEmpty: "零不显示", resetColumns: "恢复默认", moveUp: "上移", moveDown: "下移", fileTooLong: "导出已取消",
  emptyTitle: "没有符合条件的数据", emptyText: "可以放宽过滤条件再试。", emptyFiltered: "快速筛选没有留下任何行", clearQuick: "清除筛选",
  loadFailed: "数据没有读到。", ledger: { first: "第一个", previous: "上一个", next: "下一个", last: "最后一个" }, findItem: "商品代码", goTo: "转到", detail: "明细",
  rows: (shown: number, all: number) => (shown === all ? `共 ${shown.toLocaleString("zh-CN")} 行` : `筛选出 ${shown.toLocaleString("zh-CN")} 行，共 ${all.toLocaleString("zh-CN")} 行`),
  selected: (rows: number, columns: number) => `选中 ${rows.toLocaleString("zh-CN")} 行 × ${columns} 列`,
  sum: "合计", count: "计数", average: "平均", copied: (cells: number) => `已复制 ${cells.toLocaleString("zh-CN")} 个单元格`,
  copyTooMuch: "选中的单元格太多，请分次复制。", copyFailed: "浏览器不允许复制。", sortedBy: "排序",
  explainPath: "列", explainField: "字段", explainValue: "数值", explainKey: "行", explainFilter: "过滤条件", explainRights: "数据权限", explainAll: "可见全部数据",
  rightShare: (visible: number, all: number, name: string) => `${name}：可见 ${visible} 个，共 ${all} 个`,
  gridName: (name: string) => `${name}，用方向键移动`,
  // forms
  schemes: "方案", noScheme: "（未选方案）", saveScheme: "保存", saveSchemeAs: "另存为", renameScheme: "改名", deleteScheme: "删除", standardScheme: "设为默认", clearStandard: "取消默认", resetFields: "清空条件",
  schemeName: "方案名称", deleteSchemeAsk: (name: string) => `删除方案“${name}”？`, standardMark: "（默认）",
  lookUp: (label: string) => `查找${label}`, quickQuery: "快速查询", okKey: "确定(&O)", cancelKey: "取消(&E)", quickKey: "快速查询(&Q)",
  badDate: "日期不对，请按 2026-11-05 的样子输入四位年份。", search: "搜索", disabledItem: "（已禁用）", lookupKeys: "输入编号、名称或拼音首字母；↑↓ 选择，回车确定，Esc 取消", yes: "是(&Y)", no: "否(&N)", progress: "请稍候", stepUp: "增加", stepDown: "减少",
  // print
  paper: "纸张", printPages: (count: number) => `共 ${count} 页`, pageOf: (page: number, count: number) => `第 ${page} 页 / 共 ${count} 页`, preparingPrint: "正在准备打印…",
  printTooLong: (rows: number) => `打印预览最多 ${rows.toLocaleString("zh-CN")} 行。请缩小过滤范围，或导出后打印。`, printedAt: "打印时间",
  guideSearch: "在说明中查找", guideMissing: "说明里没有找到。",
  answers: { ok: "确定(&O)", cancel: "取消(&C)", yes: "是(&Y)", no: "否(&N)" },
} as const;
