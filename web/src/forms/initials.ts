// Base data by the initials of its pinyin, for letters that the lookup itself finds nothing for.
import type { LookupRow, TreeNode } from "../protocol";
import { initialsOf } from "../reports/search";
import type { Session } from "../session/Session";

const kTypes: Record<string, number> = { 客户: 1, 部门: 2, 职员: 3, 商品: 4, 仓库: 5, 供应商: 8, 辅助属性: 10 };
const kMostAsked = 100_000;
const kMostShown = 200;
const kDisabledColor = 255;
const kBreath = 1000; // rows between two breaths of the page

// The names of one lookup window, fetched when initials are typed for the first time.
export class Initials {
  private rows: Promise<LookupRow[]> | null = null;

  constructor(private readonly session: Session, private readonly caption: string) {}

  // Nothing when `stillWanted` says in the middle that something else is typed by now.
  async find(typed: string, stillWanted: () => boolean): Promise<TreeNode[]> {
    const dataType = kTypes[this.caption.replace(/^选择/, "")];
    const letters = typed.trim().toLowerCase();
    if (dataType === undefined || !/^[a-z]+$/.test(letters)) return [];
    this.rows ??= this.session.line.ask("queryLookup", { dataType, text: "", limit: kMostAsked }).then(({ rows }) => rows.filter((row) => row.detail));
    const rows = await this.rows;
    const found: TreeNode[] = [];
    for (let i = 0; i < rows.length && found.length < kMostShown; i += 1) {
      const row = rows[i]!;
      if (initialsOf(row.name).includes(letters)) found.push({ key: `S${row.id}`, parent: "", text: `${row.number}  ${row.name}`, tag: row.number, checked: false, color: row.disabled ? kDisabledColor : 0, image: "Item" });
      if (i % kBreath !== kBreath - 1) continue;
      await new Promise((resolve) => setTimeout(resolve));
      if (!stillWanted()) return [];
    }
    return found;
  }
}
