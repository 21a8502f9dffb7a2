// The line to the session's server: commands with their replies, and messages that come by themselves.
import type { Command, ErrorMessage, Message, Replies } from "../protocol";

type CommandOf<T extends Command["type"]> = Omit<Extract<Command, { type: T }>, "type" | "id">;

// An answer of kind `error`.
export class CommandError extends Error {
  constructor(readonly reply: ErrorMessage) {
    super(reply.text);
  }
}

// The line broke before the answer came.
export class LineBroken extends Error {}

interface Waiting {
  resolve: (message: Message) => void;
  reject: (error: Error) => void;
}

export class Connection {
  private socket: WebSocket | null = null;
  private readonly waiting = new Map<number, Waiting>();
  private lastId = 0;
  onMessage: (message: Message) => void = () => {};
  onClosed: () => void = () => {};

  open(address: string): Promise<void> {
    return new Promise((resolve, reject) => {
      const socket = new WebSocket(address);
      this.socket = socket;
      socket.onopen = () => resolve();
      socket.onmessage = (event) => this.take(JSON.parse(String(event.data)) as Message);
      socket.onclose = () => {
        if (this.socket !== socket) return;
        this.socket = null;
        this.breakOff();
        reject(new LineBroken());
        this.onClosed();
      };
    });
  }

  close(): void {
    const socket = this.socket;
    this.socket = null;
    socket?.close();
  }

  // Nobody will answer any more what was asked so far.
  breakOff(): void {
    for (const one of this.waiting.values()) one.reject(new LineBroken());
    this.waiting.clear();
  }

  ask<T extends Command["type"]>(type: T, fields: CommandOf<T>): Promise<Replies[T]> {
    const { socket } = this;
    if (!socket || socket.readyState !== WebSocket.OPEN) return Promise.reject(new LineBroken());
    const id = ++this.lastId;
    socket.send(JSON.stringify({ type, id, ...fields }));
    return new Promise((resolve, reject) => {
      this.waiting.set(id, { resolve: resolve as (message: Message) => void, reject });
    });
  }

  // Messages are applied in the order in which they come, replies among them.
  private take(message: Message): void {
    this.onMessage(message);
    if (message.re === undefined) return;
    const waiting = this.waiting.get(message.re);
    this.waiting.delete(message.re);
    if (message.type === "error") waiting?.reject(new CommandError(message));
    else waiting?.resolve(message);
  }
}
