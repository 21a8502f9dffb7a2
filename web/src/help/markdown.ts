// The guide's small part of Markdown: headings, paragraphs, lists, tables, pictures, bold, code and keys.
import { escapeHtml } from "../grid/clipboard";

function inline(text: string, picture: (path: string) => string): string {
  return escapeHtml(text)
    .replace(/!\[([^\]]*)\]\(([^)]+)\)/g, (_, alt: string, path: string) => `<img src="${picture(path)}" alt="${alt}">`)
    .replace(/\[([^\]]+)\]\((#[^)]+)\)/g, "<strong>$1</strong>")
    .replace(/`([^`]+)`/g, "<kbd>$1</kbd>")
    .replace(/\*\*([^*]+)\*\*/g, "<strong>$1</strong>");
}

export interface Chapter {
  title: string;
  html: string;
  text: string;
}

export function readChapters(source: string, picture: (path: string) => string): Chapter[] {
  return source.split(/^(?=## )/m).slice(1).map((part) => {
    const [first = "", ...rest] = part.split("\n");
    const blocks = rest.join("\n").trim().split(/\n{2,}/);
    const html = blocks.map((block) => blockHtml(block, picture)).join("");
    return { title: first.replace(/^## /, ""), html, text: part };
  });
}

function blockHtml(block: string, picture: (path: string) => string): string {
  const lines = block.split("\n");
  const first = lines[0]!;
  if (first.startsWith("### ")) return `<h3>${inline(first.slice(4), picture)}</h3>${lines.length > 1 ? blockHtml(lines.slice(1).join("\n"), picture) : ""}`;
  if (/^(\d+\.|-) /.test(first)) {
    const tag = first.startsWith("-") ? "ul" : "ol";
    return `<${tag}>${lines.map((line) => `<li>${inline(line.replace(/^(\d+\.|-) /, ""), picture)}</li>`).join("")}</${tag}>`;
  }
  if (first.startsWith("|")) {
    const rows = lines.filter((line) => !/^\|[-| ]+\|$/.test(line)).map((line) => line.slice(1, -1).split("|").map((cell) => inline(cell.trim(), picture)));
    const [head = [], ...body] = rows;
    return `<table><tr>${head.map((cell) => `<th>${cell}</th>`).join("")}</tr>${body.map((row) => `<tr>${row.map((cell) => `<td>${cell}</td>`).join("")}</tr>`).join("")}</table>`;
  }
  return `<p>${inline(lines.join(""), picture)}</p>`;
}
