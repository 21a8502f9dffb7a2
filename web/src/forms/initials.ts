// Base data by the initials of its pinyin, for letters that the lookup itself finds nothing for.
import type { TreeNode } from "../protocol";
import { initialsOf } from "../reports/search";
import type { Session } from "../session/Session";

const kTypes: Record<string, number> = { 客户: 1, 部门: 2, 职员: 3, 商品: 4, 仓库: 5, 供应商: 8, 辅助属性: 10 };
const kMostAsked = 5000;
const kMostShown = 200;
const kDisabledColor = 255;

export async function suggest(session: Session, caption: string, typed: string): Promise<TreeNode[]> {
  const dataType = kTypes[caption.replace(/^选择/, "")];
  const letters = typed.trim().toLowerCase();
  if (dataType === undefined || !/^[a-z]+$/.test(letters)) return [];
  const { rows } = await session.line.ask("queryLookup", { dataType, text: "", limit: kMostAsked });
  return rows
    .filter((row) => row.detail && initialsOf(row.name).includes(letters))
    .slice(0, kMostShown)
    .map((row) => ({ key: `S${row.id}`, parent: "", text: `${row.number}  ${row.name}`, tag: row.number, checked: false, color: row.disabled ? kDisabledColor : 0, image: "Item" }));
}
